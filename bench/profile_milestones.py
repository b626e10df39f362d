"""What a process does one thing after the other, by the clock: the times between system calls that mark its way."""

import re
import statistics
import subprocess

TRACED = ("execve,set_tid_address,getrandom,connect,memfd_create,openat,sendmsg,write,rename,renameat,renameat2,"
          "exit_group")

# Each stretch ends with the first call, after the one before, whose line has this in it.
TO_MAIN = [("libraries mapped", r"set_tid_address\("), ("libraries relocated", r"getrandom\(")]
FULL_SCREEN = [*TO_MAIN, ("connected to the X server", r"connect\(.*X11-unix"),
               ("screen found, its pixels asked for", r"memfd_create\("),
               ("pixels there, pointer painted", r"openat\(.*cpu/online"), ("PNG made", r'write\(.*"\\211PNG'),
               ("written, in its place", r"rename\w*\("), ("memory given back", r"exit_group\(")]
START = [*TO_MAIN, ("connected to the bus", r"connect\(.*dbus"), ("a display looked for", r"connect\(.*X11-unix"),
         ("name asked for", r"sendmsg\(.*RequestName"),
         ("afterwards: the toolkit's platform loaded", r"openat\(.*libqxcb\.so"),
         ("toolkit connected to the X server", r"connect\(.*X11-unix"),
         ("backends connected, too", r"connect\(.*X11-unix")]


def terms(log, stretches):
    """Seconds of each stretch by its name; a stretch whose mark is not there is told with its name alone."""
    lines = [(float(moment), line) for moment, line in
             re.findall(r"^(?:\d+\s+)?(\d+\.\d+) (.*)$", log, re.MULTILINE)]
    found, place = {}, 0
    last = lines[0][0]
    for name, mark in stretches:
        hit = next((index for index in range(place + 1, len(lines)) if re.search(mark, lines[index][1])), None)
        if hit is None:
            found[name] = None
            continue
        place, moment = hit, lines[hit][0]
        found[name], last = moment - last, moment
    return found


class Traced:
    """Runs commands on a desktop under strace, which stops them at the traced calls only."""

    def __init__(self, desktop):
        self.desktop, self.log = desktop, desktop.folder / "strace.log"

    def run(self, command, stretches, watch=None):
        """The terms of one run. An agent is asked to quit as soon as `watch`, a NameWatch, sees its name."""
        process = subprocess.Popen(
            ["strace", "-f", "--seccomp-bpf", "-ttt", "-s", "400", "-e", f"trace={TRACED}", "-o", str(self.log),
             *command], env=self.desktop.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        if watch:
            watch.wait_until_owned()
            self.desktop.run(command[0], "quit")
            watch.wait_until_free()
        process.wait(60)
        return terms(self.log.read_text(errors="replace"), stretches)

    def medians(self, command, stretches, rounds, watch=None):
        """The median of each term that all runs have; the first run is for the page cache."""
        self.run(command, stretches, watch)
        runs = [self.run(command, stretches, watch) for _ in range(rounds)]
        return {name: statistics.median(run[name] for run in runs) for name, _ in stretches
                if all(run[name] is not None for run in runs)}
