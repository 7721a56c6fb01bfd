"""What goes wrong in a rack besides: machines that stand still, and the database with the ways to it."""

import contextlib
import dataclasses
import functools
import os
import signal
import time

from faults import Faults
from hub import CLOSED, ITEM, OPENED, PAID, Hub, is_whole_receipt
from openfiles import connections, files_of, holder_of
from programs import children
from relay import BEGUN, SETTLED


@dataclasses.dataclass(frozen=True)
class Fault:
    """When it was made (seconds since 1970), how long it lasts, and the registers whose documents it may have met."""

    kind: str
    time: float
    registers: tuple
    seconds: float = 0


class RackFaults(Faults):
    PAUSE = 1
    WEIGHTS = {"worker": 12, "register": 12, "cut": 20, "service_kill": 5, "group_kill": 5, "service_stop": 2, "paper": 4,
               "database": 3, "way_cut": 8, "way_still": 3, "freeze": 4, "freeze_worker": 3, "freeze_begun": 6, "freeze_opened": 2,
               "freeze_item": 2, "freeze_close": 12, "freeze_closed": 4, "freeze_settled": 4, "late_close": 4, "kill_begun": 3,
               "cut_commit": 6}

    # So many of those that are made at random are made where a document is under way, if there is one.
    AIMED = 0.7
    # Of whole groups.
    STOPS = ("freeze", "freeze_begun", "freeze_opened", "freeze_item", "freeze_close", "freeze_closed", "freeze_settled",
             "late_close")

    # Where registers are taken for a fence that are none.
    UNFENCED = {"late_receipt": 1}
    # Leases in which a register is taken over, and its new owner has asked it.
    TAKEOVER = 6

    def __init__(self, rack, random, is_believed):
        super().__init__(rack.service, rack.registers, random, silences=0, swaps=0)
        self._rack = rack
        self.made = []
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
        self._rack.database.revive()
        for service in self.service.each:
            self._start_again(service)

    def note(self, kind, registers=(), seconds=0):
        super().note(kind, registers, seconds)
        self.made.append(Fault(kind, time.time(), tuple(registers), seconds))

    def registers_of(self, processes):
        files = files_of(processes, connections())
        return [one.name for one in self.registers if one.line.place() in files]

    def _registers_at(self, place):
        """Those that the service there has its workers at."""
        return self.registers_of(self._service(place).workers())

    def _seconds(self):
        """Mostly beyond the lease."""
        return self._rack.lease * self.random.choice((0.5, 1.1, 1.5, 2, 3))

    def _place(self):
        busy = [place for place, relay in enumerate(self._rack.relays) if relay.hosts_at_work()]
        return self.random.choice(busy if busy and self.random.random() < self.AIMED else range(len(self._rack.relays)))

    def _worker(self):
        """Of a document that is under way, or any."""
        ports = [port for relay in self._rack.relays for port in relay.hosts_at_work()]
        aimed = self.random.random() < self.AIMED and ports and holder_of(self.random.choice(ports), self.service.workers())
        return aimed or super()._worker()

    def _register(self):
        worker = self._worker()
        names = self.registers_of([worker]) if worker else ()
        return next((one for one in self.registers if one.name in names), None) or super()._register()

    def _service(self, place):
        return self._rack.service.each[place]

    def _group(self, place):
        return self._service(place).program.process.pid

    def _freeze(self, group, kind, seconds):
        registers = self.registers_of(children(group))
        if self._rack.frozen.freeze(group, seconds):
            self.note(kind, registers, seconds)

    def freeze(self):
        self._freeze(self._group(self._place()), "freeze", self._seconds())

    def freeze_worker(self):
        """Its service knows of nothing, and goes on."""
        if worker := self._worker():
            seconds = self._seconds()
            with contextlib.suppress(ProcessLookupError):
                os.kill(worker, signal.SIGSTOP)
                self.note("freeze_worker", self.registers_of([worker]), seconds)
            self._in(seconds, lambda: self._go_on(worker))

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
            registers = self._registers_at(place)
            self._rack.relays[place].cut(0.2)
            self.note(kind, registers, 0.2)
        self._trap(self.random.choice((BEGUN, SETTLED)), self.random.choice(("before", "behind")), "cut_commit", cut)

    def _freeze_behind(self, step, kind):
        """A receipt over XML is one request, and has no steps before its end."""
        register = self.random.choice([one for one in self.registers if isinstance(one.line, Hub)
                                       and (one.protocol == "HEX" or step == CLOSED)])
        register.line.set_trap(step, self._freezing(kind, self._seconds()))

    def freeze_opened(self):
        self._freeze_behind(OPENED, "freeze_opened")

    def freeze_item(self):
        self._freeze_behind(ITEM, "freeze_item")

    def freeze_close(self):
        """All that stands still has the answer behind which it closes the receipt: the close is the next that it sends."""
        self._freeze_behind(PAID, "freeze_close")

    def freeze_closed(self):
        """The register has made the document, and whoever made it has not heard of it."""
        self._freeze_behind(CLOSED, "freeze_closed")

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
        registers = self._registers_at(place)
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self._group(place), signal.SIGKILL)
            self.note(kind, registers)
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
        place = self._place()
        service, registers = self._service(place), self._registers_at(place)
        self.note(kind, registers)
        service.program.end(how, 5)
        self._in(self.random.choice((0, self._seconds())), lambda: self._start_again(service))

    def database(self):
        if self._rack.database.server.poll() is not None:
            return
        seconds = self.random.uniform(0, 2 * self._rack.lease)
        self.note("database", [one.name for one in self.registers], seconds)
        self._rack.database.stop()
        self._in(seconds, self._rack.database.start)

    def way_cut(self):
        place, seconds = self._place(), self.random.choice((0, self._seconds()))
        self.note("way_cut", self._registers_at(place), seconds)
        self._rack.relays[place].cut(seconds)

    def way_still(self):
        place, seconds = self._place(), self._seconds()
        self.note("way_still", self._registers_at(place), seconds)
        self._rack.relays[place].stand_still(seconds)
