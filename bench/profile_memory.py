"""What makes up the memory of a process at rest, by what is mapped."""

import collections
import pathlib
import re

SHOWN = 14  # mappings, at most


def parts(process):
    """Bytes of the proportional set size by mapping: a library's name, the heap, other anonymous memory, ..."""
    sizes = collections.Counter()
    name = ""
    for line in pathlib.Path(f"/proc/{process}/smaps").read_text().splitlines():
        if mapping := re.match(r"[0-9a-f]+-[0-9a-f]+ \S+ \S+ \S+ \d+\s*(.*)", line):
            name = pathlib.Path(mapping[1]).name if mapping[1] else "[anonymous]"
        elif line.startswith("Pss:"):
            sizes[name] += int(line.split()[1]) * 1024
    return sizes


def lines(sizes):
    total = sum(sizes.values())
    shown = sizes.most_common(SHOWN)
    rest = total - sum(size for _, size in shown)
    return [f"- {total / 2**20:.1f} MiB, of it "
            + ", ".join(f"{name} {size / 2**20:.2f}" for name, size in shown if size)
            + f", all others {rest / 2**20:.2f}"]
