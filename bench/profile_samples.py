"""Where processors spend their time while something is done again and again, by program, library and function."""

import collections
import pathlib
import re
import signal
import subprocess
import time

SAMPLES_A_SECOND = 5000
SHOWN = 8  # functions, at most


class Sampler:
    """perf on a command, or on some processes between `start` and `stop`."""

    def __init__(self, folder):
        self.file = pathlib.Path(folder) / "perf.data"
        self.command = ["perf", "record", "--quiet", "-e", "cpu-clock", "-F", str(SAMPLES_A_SECOND), "-o",
                        str(self.file)]

    def run(self, command, environment):
        """Seconds by (program, library, function) of one run of a command that ends by itself."""
        subprocess.run([*self.command, "--", *command], env=environment, check=True, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return self._read()

    def start(self, *processes):
        self.file.unlink(missing_ok=True)
        self.perf = subprocess.Popen([*self.command, "-p", ",".join(map(str, processes))], stdin=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL)
        while not self.file.exists() or not self.file.stat().st_size:  # it samples once it has written its header
            if self.perf.poll() is not None:
                raise RuntimeError("perf does not run: see kernel.perf_event_paranoid")
            time.sleep(0.01)

    def stop(self):
        """Seconds by (program, library, function)."""
        self.perf.send_signal(signal.SIGINT)
        self.perf.wait(60)
        return self._read()

    def _read(self):
        script = subprocess.run(["perf", "script", "-i", str(self.file), "-F", "comm,ip,sym,dso"],
                                capture_output=True, text=True, check=True).stdout
        return count(script)


def count(script):
    """Seconds by (program, library, function), of perf's list of samples."""
    seconds = collections.Counter()
    for line in script.splitlines():
        sample = re.match(r"\s*(.+?)\s+[0-9a-f]+\s(.*) \((.*)\)$", line)
        if sample:
            program, function, library = sample.groups()
            function = function.replace("(anonymous namespace)::", "")
            library = "kernel" if "kernel" in library or "guest" in library else pathlib.Path(library).name
            seconds[program, library, function.split("(")[0] or "?"] += 1 / SAMPLES_A_SECOND
    return seconds


def lines(seconds, acts):
    """What one of so many acts takes, as a list of Markdown: each program and library, then the dearest functions."""
    libraries = collections.Counter()
    for (program, library, _), taken in seconds.items():
        libraries[program, library] += taken
    total = sum(seconds.values())
    text = [f"- processor time of an act: {total / acts * 1000:.2f} ms, of it "
            + ", ".join(f"{program} in {library} {taken / acts * 1000:.2f}"
                        for (program, library), taken in libraries.most_common(SHOWN))]
    text += [f"  - {function} ({program}, {library}): {taken / acts * 1000:.2f} ms"
             for (program, library, function), taken in seconds.most_common(SHOWN)]
    return text
