"""What a process holds in memory, and how often it wakes up."""

import pathlib
import re
import time


def _numbers(path):
    """The numbers of a file of `name: number` lines in /proc."""
    return {name: int(number) for name, number in
            re.findall(r"^(\w+):\s+(\d+)", pathlib.Path(path).read_text(), re.MULTILINE)}


def memory(process):
    """Bytes: the proportional set size of the process of this identifier, and its anonymous part."""
    sizes = _numbers(f"/proc/{process}/smaps_rollup")
    return sizes["Pss"] * 1024, sizes["Pss_Anon"] * 1024


def switches(process):
    """How often the threads of the process have been put on a processor or taken off it."""
    total = 0
    for status in pathlib.Path(f"/proc/{process}/task").glob("*/status"):
        counts = _numbers(status)
        total += counts["voluntary_ctxt_switches"] + counts["nonvoluntary_ctxt_switches"]
    return total


def wake_ups(process, seconds):
    """How many of these switches there are in `seconds`."""
    before = switches(process)
    time.sleep(seconds)
    return switches(process) - before


def others_with_its_toolkit(process):
    """How many other processes of the machine have the same Qt in memory, whose pages then count by halves."""
    libraries = _toolkit(process)
    others = (int(entry.name) for entry in pathlib.Path("/proc").iterdir() if entry.name.isdigit())
    return sum(1 for other in others if other != process and _toolkit(other) & libraries)


def _toolkit(process):
    try:
        return set(re.findall(r"/\S*libQt\dCore\S*", pathlib.Path(f"/proc/{process}/maps").read_text()))
    except OSError:  # it has ended meanwhile
        return set()
