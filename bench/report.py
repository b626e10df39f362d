"""The measurements as Markdown tables, and where docs/performance.md keeps them."""

import datetime
import os
import pathlib
import platform
import statistics
import subprocess


def package_version(package):
    """Version of an installed Debian package; empty when there is none of that name."""
    done = subprocess.run(["dpkg-query", "-W", "-f=${Version}", package], capture_output=True, text=True, check=False)
    return done.stdout.strip() if done.returncode == 0 else ""


def version(contender):
    """What the program itself says for ours, what the distribution says for the others."""
    if not contender.name.startswith("lumacap"):
        return package_version(contender.package)
    done = subprocess.run([contender.program, "--version"], capture_output=True, text=True, timeout=20, check=False,
                          env=os.environ | {"QT_QPA_PLATFORM": "offscreen"})
    return done.stdout.strip().removeprefix("lumacap ")


def milliseconds(values):
    middle = statistics.median(values) * 1000
    return f"{middle:.0f}" if middle >= 100 else f"{middle:.1f}"


def ratio(measured, reference):
    """Ratio of the medians, and the least and the greatest ratio within one round."""
    if not reference:
        return "–"
    if measured == reference:
        return "1"
    pairs = [a / b for a, b in zip(measured, reference)]
    of_medians = statistics.median(measured) / statistics.median(reference)
    return f"{of_medians:.2f} ({min(pairs):.2f}–{max(pairs):.2f})"


def table(title, contenders, results):
    """One row a program: `results` has the list of measurements by name, none for a program that is missing."""
    reference = [m.seconds for m in results.get("lumacap", [])]
    lines = [f"### {title}", "",
             "| program | version | median ms | min–max ms | ratio to lumacap | processor ms | file, MB |",
             "|---|---|---:|---:|---:|---:|---:|"]
    for contender in contenders:
        measured = results.get(contender.name, [])
        if not measured:
            state = "not built" if contender.name == "lumacap" else "not installed"
            lines.append(f"| {contender.name} | {state} | | | | | |")
            continue
        times = [m.seconds for m in measured]
        cpu = [m.cpu_seconds for m in measured if m.cpu_seconds is not None]
        lines.append(f"| {contender.name} | {version(contender)} | {milliseconds(times)} "
                     f"| {min(times) * 1000:.0f}–{max(times) * 1000:.0f} | {ratio(times, reference)} "
                     f"| {milliseconds(cpu) if cpu else ''} | {measured[-1].file_bytes / 1e6:.2f} |")
    return lines


def limits_table(results, title="The machine's own limits, in the same rounds"):
    """What is timed beside the programs: what the machine can do with one frame, for one."""
    lines = [f"### {title}", "", "| | median ms | min–max ms |", "|---|---:|---:|"]
    for name, times in results.items():
        lines.append(f"| {name} | {milliseconds(times)} | {min(times) * 1000:.1f}–{max(times) * 1000:.1f} |")
    return lines


def machine_facts(load_before, desktops):
    """The lines that say what the numbers were measured on; `desktops` has packages by the names people know."""
    model = next((line.split(":", 1)[1].strip() for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines()
                  if line.startswith("model name")), platform.machine())
    system = platform.freedesktop_os_release().get("PRETTY_NAME", platform.system())
    packages = ", ".join(f"{name} {package_version(package)}" for name, package in desktops.items())
    return [f"- {datetime.date.today()}; {model}, {os.cpu_count()} cores; {system}, Linux {platform.release()}{packages and '; ' + packages}",
            f"- load average before: {' '.join(f'{value:.2f}' for value in load_before)}; now: "
            f"{' '.join(f'{value:.2f}' for value in os.getloadavg())}"]


def turns(rounds, folder):
    """The line that says in which order programs were measured, and where they wrote their files."""
    files = subprocess.run(["stat", "-f", "-c", "%T", str(folder)], capture_output=True, text=True, check=False)
    return (f"- {rounds} rounds; in each, every program once, the order turned by one from round to round; files on "
            f"{files.stdout.strip()}")


def store(path, text, program="bench/run"):
    """Replaces what stands between the markers of `program` in `path`; raises when they are not there."""
    begin, end = f"<!-- {program}: begin -->", f"<!-- {program}: end -->"
    content = path.read_text()
    if content.count(begin) != 1 or content.count(end) != 1:
        raise ValueError(f"{path} has no place for the tables: {begin} … {end}")
    before, rest = content.split(begin)
    path.write_text(f"{before}{begin}\n{text}\n{end}{rest.split(end)[1]}")
