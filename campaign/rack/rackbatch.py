"""One batch of a rack: database, registers, services and clients from nothing to the verdict."""

import subprocess
import time

from batch import Batch
from database import Database
from hub import Hub
from lines import PtyLine
from machines import Frozen, Machine, Services, services_of
from person import Person
from plan import drawn
from rackfaults import Fault, RackFaults
from registers import Register
from relay import Relay
from tables import Tables, disagreements, met, overtaken

# So long a register is asked that is no fence, and then a person is.
ASKED_FOR = 20
POOLS = {"any": lambda register: True, "fenced": lambda register: register.is_exclusive}
# Whom a register hears that two hosts connect to, and how many there are; None for a serial line.
KINDS = (("last", 4), ("both", 3), ("first", 2), (None, 3))
# Where they are all said to drop the former one, which none does.
BELIEVED_KINDS = (("both", 12),)


def registers_of(emulator, folder, is_believed):
    kinds = [kind for kind, count in (BELIEVED_KINDS if is_believed else KINDS) for _ in range(count)]
    for place, kind in enumerate(kinds):
        # What is connected to twice is no fence, as a detection would have found; a serial line has its machine.
        yield Register(emulator, folder, place, Hub if kind else PtyLine, ("--tcp-connections", kind) if kind else (),
                       is_believed or kind in ("last", None))


class RackBatch(Batch):
    CLIENTS = 30
    # Of the longest stops, one behind the other.
    LATENESS = 30

    def __init__(self, programs, folder, seed, documents):
        self.lease = programs.lease
        registers = list(registers_of(programs.emulator, folder, programs.believe_fenced))
        self.database = Database("max_connections=200")
        self.relays = [Relay(self.database.folder) for _ in range(3)]
        here = Machine()
        services = services_of(programs.frserver, programs.plugin, folder, self._shares(registers, programs.takeover), self.relays,
                               (here, here, Machine(folder / "elsewhere")), self._settings)
        super().__init__(folder, seed, documents, registers, Services(services), list(POOLS))
        for relay in self.relays:
            relay.start()
        subprocess.run([programs.frserver, "--config", services[0].config, "migrate"], check=True)
        self.frozen = Frozen()
        self.faults = RackFaults(self, drawn(seed, "faults"), programs.believe_fenced)
        self._asked_until = None
        self._tables = None
        self._cases = 0

    @staticmethod
    def _shares(registers, is_taken_over):
        """Two services look after the same registers on this machine, the third on another one those that are in the network; or
        each has its own."""
        if not is_taken_over:
            return [registers[place::3] for place in range(3)]
        return registers, registers, [one for one in registers if isinstance(one.line, Hub)]

    def _settings(self, registers):
        """Of a service with these."""
        return {"store": {"lease": self.lease}} | {f"pool {pool}": {"registers": ",".join(one.name for one in registers if has(one))}
                for pool, has in POOLS.items()}

    def _start(self):
        super()._start()
        self.service.wait_for_registers(len(self.registers))

    def _unfenced(self):
        return frozenset(one.name for one in self.registers if not one.is_exclusive)

    def _may_be_asked(self, document):
        is_in_time = document["register"] not in self._unfenced() or time.monotonic() < self._asked_until
        return super()._may_be_asked(document) and is_in_time

    def _settle(self):
        self._asked_until = time.monotonic() + ASKED_FOR
        wrong = super()._settle()
        person = Person(self.service, self.ledger, {one.name: one for one in self.registers if not one.is_exclusive})
        wrong += person.look()
        self._cases = person.cases
        return wrong

    def _contradictions(self, evidence):
        self._tables = Tables.of(self.database)
        with open(self.folder / "faults.txt", "w", encoding="utf-8") as file:
            file.writelines(f"{one}\n" for one in self._made())
        return super()._contradictions(evidence) + list(disagreements(self._tables, evidence.journal))

    def _made(self):
        cuts = [Fault("cut", time_, (one.name,)) for one in self.registers for time_ in one.line.cuts]
        return sorted(self.faults.made + cuts, key=lambda one: one.time)

    def _figures(self, evidence, wrong, seconds):
        stops = [one for one in self._made() if one.kind in RackFaults.STOPS]
        later = overtaken(stops, self._tables.attempts)
        rack = {"takeovers": self._tables.takeovers(), "beyond": sum(one.seconds > self.lease for one in stops),
                "overtaken": later.total(), "overtaken_close": later["freeze_close"], "person": self._cases}
        return super()._figures(evidence, wrong, seconds) | {
            "met": met(self._made(), self._tables.attempts), "rack": rack}

    def _stop(self):
        self.frozen.end()
        super()._stop()
        for relay in self.relays:
            relay.end()
        self.database.close()
