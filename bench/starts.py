"""How long programs take to start, one at a time and in turns, and what an empty one takes."""

import subprocess
import sys
import time

import benchmark_programs
from name_watch import NameWatch
from virtual_desktop import end

EMPTY = "an empty program of Qt Widgets, to its event loop"


class EmptyStart:
    """A program that does nothing but say when its event loop turns."""
    name = EMPTY

    def __init__(self, desktop):
        self.answered = []
        self.desktop = desktop
        self.command = benchmark_programs.built("lumacap_empty_program")

    def measure(self):
        start = time.perf_counter()
        process = subprocess.Popen(self.command, env=self.desktop.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        said = process.stdout.readline()
        seconds = time.perf_counter() - start
        end(process)
        process.stdout.close()
        if said != b"ready\n":
            raise RuntimeError("the empty program did not start")
        return seconds

    def close(self):
        """There is nothing to give back."""


class Start:
    """One program, from the start of its process until it owns its name on the bus, and until it answers there."""

    def __init__(self, desktop, program):
        self.program, self.name, self.bus = program, program.name, desktop.session_bus
        self.watch = NameWatch(self.bus, program.bus_name)
        self.answered = []

    def measure(self):
        """Seconds of one start; the program has ended again when this returns."""
        start = time.perf_counter()
        process = self.program.start()
        seconds = self.watch.wait_until_owned() - start
        try:
            self.bus.call(self.program.bus_name, self.program.bus_path, "org.freedesktop.DBus.Introspectable",
                          "Introspect", "()")
        except RuntimeError:  # an error is an answer, too
            pass
        self.answered.append(time.perf_counter() - start)
        end(process)
        self.watch.wait_until_free()
        return seconds

    def close(self):
        self.watch.close()


def take_turns(desktop, programs, rounds):
    """Seconds by name until each owns its name, and until it has answered a first call. Each has been started once
    before, so that it comes from the page cache."""
    starts = [Start(desktop, program) for program in programs if program.bus_name] + [EmptyStart(desktop)]
    results = {start.name: [] for start in starts}
    for start in starts:
        start.measure()
        start.answered.clear()
    for turn in range(rounds):
        first = turn % len(starts)
        for start in starts[first:] + starts[:first]:
            results[start.name].append(start.measure())
        print(f"\rstarts {turn + 1}/{rounds} ", end="", file=sys.stderr, flush=True)
    print(file=sys.stderr)
    for start in starts:
        start.close()
    return results, {start.name: start.answered for start in starts}
