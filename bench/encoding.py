"""PNG files made of a 4K frame in memory: ours beside libpng, and what ours take on screens of other sizes."""

import collections
import dataclasses
import json
import statistics
import subprocess

import benchmark_programs

PROGRAM = "lumacap_encoding_bench"
CONTENTS = ("busy", "text", "photograph")
# What each measurement is called in the program, with the number of the content for {}, and what we call it.
ENCODERS = {"png/{}": "lumacap", "pngWithZlib/{}": "lumacap, zlib for ISA-L",
            "encodeWithLibpng/{}/1": "libpng, level 1", "encodeWithLibpng/{}/6": "libpng, level 6"}
COPY = "a copy of the frame"
REPETITIONS = 5  # at most: the longest of them take ten seconds for each
ROWS = {"1080p": 1080, "4K": 2160, "8K": 4320}


@dataclasses.dataclass
class Encoding:
    """The median of all repetitions."""
    seconds: float
    file_bytes: int


def read(program, repetitions):
    """Every measurement of the program by its name: real seconds and bytes, medians."""
    done = subprocess.run(
        [program, "--benchmark_format=json", f"--benchmark_repetitions={repetitions}", "--benchmark_min_time=0.01",
         "--benchmark_enable_random_interleaving=true", "--benchmark_filter=copyMemory|png|encodeWithLibpng"],
        capture_output=True, text=True, check=True)
    times, sizes = collections.defaultdict(list), {}
    for entry in json.loads(done.stdout)["benchmarks"]:
        if entry["run_type"] == "iteration":
            name = entry["run_name"].removesuffix("/real_time")
            times[name].append(entry["real_time"] / 1000)
            sizes[name] = round(entry.get("bytes", 0))
    return {name: Encoding(statistics.median(times[name]), sizes[name]) for name in times}


def table(results, copy):
    lines = ["### PNG of a 4K frame, from memory to memory", "",
             "| picture | encoder | ms | ratio to libpng 1 | bytes | ratio to libpng 6 |",
             "|---|---|---:|---:|---:|---:|"]
    for content, encodings in results.items():
        quick, small = encodings["libpng, level 1"], encodings["libpng, level 6"]
        for name, encoding in encodings.items():
            lines.append(f"| {content} | {name} | {encoding.seconds * 1000:.1f} "
                         f"| {encoding.seconds / quick.seconds:.3f} | {encoding.file_bytes:,} "
                         f"| {encoding.file_bytes / small.file_bytes:.3f} |")
    return [*lines, f"| any | {COPY} | {copy.seconds * 1000:.1f} | | | |"]


def sizes_table(sizes):
    lines = ["### PNG of the busy frame by the size of the screen", "", "| screen | ms | ratio to 1080p |",
             "|---|---:|---:|"]
    for size, seconds in sizes.items():
        lines.append(f"| {size} | {seconds * 1000:.1f} | {seconds / sizes['1080p']:.2f} |")
    return lines


def run(rounds, facts):
    """Lines of Markdown, and every measurement; `facts` says what they were measured on."""
    program, = benchmark_programs.built(PROGRAM)
    repetitions = min(rounds, REPETITIONS)
    read_now = read(program, repetitions)
    results = {content: {name: read_now[measurement.format(number)] for measurement, name in ENCODERS.items()}
               for number, content in enumerate(CONTENTS)}
    sizes = {size: read_now[f"pngOfRows/{rows}"].seconds for size, rows in ROWS.items()}
    lines = [*facts(), f"- medians of {repetitions} repetitions taken in turns, in one process", "",
             *table(results, read_now["copyMemory"]), "", *sizes_table(sizes)]
    return lines, {"PNG in memory": results, "copy in memory": read_now["copyMemory"], "PNG by size of screen": sizes}
