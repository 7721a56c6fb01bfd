"""What goes wrong in a rack besides: machines that stand still, and the database with the ways to it."""

import contextlib
import functools
import os
import signal
import time
from pathlib import Path

from faults import Faults
from hub import Hub, is_whole_receipt
from relay import BEGUN, SETTLED


def holder_of(port, processes):
    """Which of them has the connection that begins at that port of this machine."""
    inodes = {line.split()[9] for line in Path("/proc/net/tcp").read_text(encoding="ascii").splitlines()[1:]
              if int(line.split()[1].split(":")[1], 16) == port}
    wanted = {f"socket:[{one}]" for one in inodes}
    for process in processes:
        with contextlib.suppress(OSError):
            if wanted & {os.readlink(one) for one in Path(f"/proc/{process}/fd").iterdir()}:
                return process
    return None


class RackFaults(Faults):
    WEIGHTS = {"worker": 12, "register": 12, "cut": 20, "service_kill": 5, "group_kill": 5, "service_stop": 2, "paper": 4,
               "database": 3, "way_cut": 8, "way_still": 3, "freeze": 4, "freeze_worker": 3, "freeze_begun": 8,
               "freeze_settled": 4, "freeze_close": 10, "late_close": 4, "kill_begun": 3, "cut_commit": 6}

    # Where registers are taken for a fence that are none.
    UNFENCED = {"late_receipt": 1}
    # Leases in which a register is taken over, and its new owner has asked it.
    TAKEOVER = 6

    def __init__(self, rack, random, is_believed):
        super().__init__(rack.service, rack.registers, random, silences=0, swaps=0)
        self._rack = rack
        # Places of services whose groups were killed; also by threads that start no program.
        self._killed = []
        if is_believed:
            self.WEIGHTS = self.UNFENCED

    def end(self):
        # Mended too early the planted fault would be none.
        while self.WEIGHTS is self.UNFENCED and self._are_held():
            time.sleep(0.1)
        self._rack.frozen.end()
        for relay in self._rack.relays:
            relay.mend()
        super().end()
        for service in self.service.each:
            self._start_again(service)

    def _seconds(self):
        """Mostly beyond the lease."""
        return self._rack.lease * self.random.choice((0.5, 1.1, 1.5, 2, 3))

    def _place(self):
        return self.random.randrange(len(self._rack.relays))

    def _service(self, place):
        return self._rack.service.each[place]

    def _group(self, place):
        return self._service(place).program.process.pid

    def _freeze(self, group, kind, seconds):
        if self._rack.frozen.freeze(group, seconds):
            self.counts[kind] += 1

    def freeze(self):
        self._freeze(self._group(self._place()), "freeze", self._seconds())

    def freeze_worker(self):
        """Its service knows of nothing, and goes on."""
        if workers := self.service.workers():
            worker = self.random.choice(sorted(workers))
            with contextlib.suppress(ProcessLookupError):
                os.kill(worker, signal.SIGSTOP)
                self.counts["freeze_worker"] += 1
            self._in(self._seconds(), lambda: self._go_on(worker))

    @staticmethod
    def _go_on(process):
        with contextlib.suppress(ProcessLookupError):
            os.kill(process, signal.SIGCONT)

    def _trap(self, step, side, kind, action):
        place, seconds = self._place(), self._seconds()
        self._rack.relays[place].set_trap(step, side, lambda: action(place, kind, seconds))

    def _freeze_at(self, place, kind, seconds):
        self._freeze(self._group(place), kind, seconds)

    def freeze_begun(self):
        """A document is begun in the database, or about to be, and nothing of it is sent to the register."""
        self._trap(BEGUN, self.random.choice(("before", "behind", "behind")), "freeze_begun", self._freeze_at)

    def freeze_settled(self):
        self._trap(SETTLED, self.random.choice(("before", "behind")), "freeze_settled", self._freeze_at)

    def kill_begun(self):
        self._trap(BEGUN, self.random.choice(("before", "behind")), "kill_begun", self._kill_group)

    def cut_commit(self):
        """The answer to a commit is lost, or the commit itself."""
        def cut(place, kind, _):
            self._rack.relays[place].cut(0.2)
            self.counts[kind] += 1
        self._trap(self.random.choice((BEGUN, SETTLED)), self.random.choice(("before", "behind")), "cut_commit", cut)

    def freeze_close(self):
        """All that stands still has the answer behind which it closes the receipt: the close is the next that it sends."""
        register = self._register()
        if not isinstance(register.line, Hub):
            return
        register.line.set_trap(self._freezing("freeze_close", self._seconds()))

    def _freezing(self, kind, seconds):
        """Stops whoever has the connection that begins at a port."""
        def freeze(port):
            if worker := holder_of(port, self.service.workers()):
                with contextlib.suppress(ProcessLookupError):
                    self._freeze(os.getpgid(worker), kind, seconds)
        return freeze

    def late_close(self):
        """The network has the closing request for so long, and who sent it stands still."""
        register = self._register()
        if isinstance(register.line, Hub):
            seconds = self._seconds()
            register.line.hold_close(seconds, self._freezing("late_close", seconds))

    def late_receipt(self):
        """A receipt over XML, which is one request: over HEX the new owner begins with cancelling what it finds open. One at a time,
        so that somebody is left to take the register over."""
        if self._are_held():
            return
        seconds = self.TAKEOVER * self._rack.lease
        lines = [one.line for one in self.registers if one.protocol == "XML"]
        freeze = self._freezing("late_close", seconds)

        def hold(port):
            for line in lines:
                line.forget_hold()
            freeze(port)
        for line in lines:
            line.hold_close(seconds, hold, is_whole_receipt)

    def _are_held(self):
        return any(one.line.held for one in self.registers if isinstance(one.line, Hub))

    def group_kill(self):
        """A machine that loses its power."""
        self._kill_group(self._place(), "group_kill")

    def _kill_group(self, place, kind, _=0):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self._group(place), signal.SIGKILL)
            self.counts[kind] += 1
        self._killed.append(place)

    def _do_what_is_due(self):
        while self._killed:
            self._in(self._seconds(), functools.partial(self._start_again, self._service(self._killed.pop())))
        super()._do_what_is_due()

    @staticmethod
    def _start_again(service):
        if not service.program.is_alive():
            service.start()

    def _end_service(self, kind, how):
        service = self._service(self._place())
        service.program.end(how, 5)
        self._in(self.random.choice((0, self._seconds())), lambda: self._start_again(service))
        self.counts[kind] += 1

    def database(self):
        if self._rack.database.server.poll() is not None:
            return
        self._rack.database.stop()
        self._in(self.random.uniform(0, 2 * self._rack.lease), self._rack.database.start)
        self.counts["database"] += 1

    def way_cut(self):
        self._rack.relays[self._place()].cut(self.random.choice((0, self._seconds())))
        self.counts["way_cut"] += 1

    def way_still(self):
        self._rack.relays[self._place()].stand_still(self._seconds())
        self.counts["way_still"] += 1
