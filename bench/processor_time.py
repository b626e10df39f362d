"""How long the processors have worked for a process, to the nanosecond and with all its threads."""

import time

SCHEDULED = 2  # of the clocks that every process has, the one that the scheduler keeps


def processor_seconds(process):
    """Seconds that the process of this identifier has run; OSError where it has ended."""
    return time.clock_gettime(~process << 3 | SCHEDULED)


class Meter:
    """What some processes use between `start` and `read`."""

    def __init__(self, *processes):
        self.processes = processes

    def start(self):
        self.before = [processor_seconds(process) for process in self.processes]

    def read(self):
        """Seconds since `start`, one number a process, in the order they were given."""
        return [processor_seconds(process) - earlier
                for process, earlier in zip(self.processes, self.before, strict=True)]
