"""What goes wrong with service, workers, registers and lines, drawn from the seed."""

import collections
import contextlib
import os
import signal
import time
import urllib.error

LONGEST_SILENCE = (15, 75)
PATIENCE_AT_STOP = 5


class Faults:
    # Between one fault and the next, on average.
    PAUSE = 0.8
    # How often each of them comes.
    WEIGHTS = {"worker": 20, "register": 18, "cut": 34, "service_kill": 7, "service_stop": 2, "paper": 5}

    def __init__(self, service, registers, random, silences, swaps):
        self.service = service
        self.registers = registers
        self.random = random
        self.counts = collections.Counter()
        self.silences = silences
        self.swaps = swaps
        self.later = []

    def run(self, progress, is_over):
        """Until the clients are done; progress is their share of it."""
        planned = {"silence": self.silences, "swap": self.swaps}
        while not is_over():
            self._do_what_is_due()
            for kind, count in planned.items():
                if self.counts[kind] < count and progress() >= (self.counts[kind] + 0.3) / (count + 0.5):
                    getattr(self, kind)()
            getattr(self, self.random.choices(list(self.WEIGHTS), self.WEIGHTS.values())[0])()
            end = time.monotonic() + self.random.expovariate(1 / self.PAUSE)
            while time.monotonic() < end and not is_over():
                self._do_what_is_due()
                time.sleep(0.05)

    def end(self):
        """All is well again."""
        for _, action in self.later:
            action()
        self.later = []
        for register in self.registers:
            register.line.mend()
            if register.line.target != register.tcp:
                register.line.lead_to(register.tcp)
            if not register.program.is_alive():
                register.start()
        for register in self.registers:
            register.wait()
            register.ask("PUT", "/paper", {"state": "in"})

    def note(self, kind, _registers=(), _seconds=0):
        """One has been made; registers are those whose documents it may have met."""
        self.counts[kind] += 1

    def registers_of(self, _processes):
        """Names of those that these processes have open, where anybody wants to know."""
        return ()

    def _in(self, seconds, action):
        self.later.append((time.monotonic() + seconds, action))

    def _do_what_is_due(self):
        due = [one for one in self.later if one[0] <= time.monotonic()]
        self.later = [one for one in self.later if one not in due]
        for _, action in due:
            action()

    def _register(self):
        return self.random.choice(self.registers)

    def _worker(self):
        """Nothing when there is none."""
        workers = self.service.workers()
        return self.random.choice(sorted(workers)) if workers else None

    def worker(self):
        if worker := self._worker():
            registers = self.registers_of([worker])
            with contextlib.suppress(ProcessLookupError):
                os.kill(worker, signal.SIGKILL)
                self.note("worker", registers)

    def register(self):
        register = self._register()
        if register.program.is_alive():
            register.program.kill()
            self.note("register", [register.name])
            self._in(self.random.uniform(0, 2), register.start)

    def cut(self):
        self._register().line.hang_up(
            self.random.choice((0, self.random.uniform(0, 2))), self.random.randint(0, 40),
            self.random.random() < 0.6)

    def service_kill(self):
        self._end_service("service_kill", signal.SIGKILL)

    def service_stop(self):
        """As a service manager does: what has not ended in time, for a silent line for one, is killed."""
        self._end_service("service_stop", signal.SIGTERM)

    def _end_service(self, kind, how):
        self.service.program.end(how, PATIENCE_AT_STOP)
        self.service.start()
        self.note(kind)

    def paper(self):
        register = self._register()

        def put(state):
            with contextlib.suppress(OSError, urllib.error.URLError):
                register.ask("PUT", "/paper", {"state": state})
        put("out")
        self.note("paper", [register.name])
        self._in(self.random.uniform(0.5, 4), lambda: put("in"))

    def silence(self):
        self._register().line.fall_silent(self.random.uniform(*LONGEST_SILENCE), self.random.random() < 0.5)
        self.note("silence")

    def swap(self):
        """Two registers change ports, and change back."""
        one, other = self.random.sample(self.registers, 2)
        if one.line.target != one.tcp or other.line.target != other.tcp:
            return
        one.line.lead_to(other.tcp)
        other.line.lead_to(one.tcp)
        self.note("swap")

        def back():
            one.line.lead_to(one.tcp)
            other.line.lead_to(other.tcp)
        self._in(self.random.uniform(2, 6), back)

