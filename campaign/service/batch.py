"""One batch: registers, service and clients from nothing to the verdict."""

import collections
import json
import time

from clients import Clients
from faults import Faults
from ledger import Ledger
from plan import draw_orders, drawn
from registers import Register
from service import Service
from verdict import WITHOUT_WITNESS, Evidence, violations

REGISTERS = 8


class Batch:
    CLIENTS = 48
    # A line is tried again after 60 s at the latest, and a HEX register may hold one exchange for 100 s.
    SETTLING = 240
    # Seconds a document, after which nothing goes wrong any more: on a machine with too much to do a batch has an end, too.
    LONGEST = 0.6
    TELL_EACH = 30
    LATENESS = 5

    # Whoever makes one gives it these.
    faults = None

    def __init__(self, folder, seed, documents, registers, service, pools=()):
        self.folder, self.seed, self.count = folder, seed, documents
        self.registers = registers
        self.service = service
        self.ledger = Ledger()
        self._told = 0
        self._is_cut_short = False
        names = [register.name for register in registers]
        self.clients = Clients(service, self.ledger, draw_orders(seed, documents, names, pools),
                               lambda what: drawn(seed, what), names)

    def run(self):
        """Figures, with the violations among them."""
        begun = time.monotonic()
        try:
            return self._run(begun)
        except BaseException:
            # Whoever interrupts it does not wait for documents that nobody looks at.
            self.service.program.kill()
            raise
        finally:
            self._stop()

    def _run(self, begun):
        self._start()
        threads = self.clients.start(self.CLIENTS)
        started = time.monotonic()
        self._tell(started)
        end = started + self.LONGEST * self.count
        self.faults.run(lambda: self.clients.done / self.count,
                        lambda: time.monotonic() >= end or self._are_done(threads, started))
        self._is_cut_short = not self._are_done(threads, started)
        self.faults.end()
        while not self._are_done(threads, started):
            time.sleep(0.1)
        wrong = self._settle() + self.clients.errors + self.clients.unexpected
        self._tell(started, "settled")
        evidence = self._evidence()
        return self._figures(evidence, wrong + self._contradictions(evidence), time.monotonic() - begun)

    def _are_done(self, threads, started):
        if time.monotonic() >= self._told + self.TELL_EACH:
            self._tell(started)
        return not any(thread.is_alive() for thread in threads)

    def _tell(self, started, what="clients are done with"):
        self._told = time.monotonic()
        print(f"{time.strftime('%H:%M:%S')} {self.seed}: {what} {self.clients.done} of {self.count} documents after "
              f"{self._told - started:.0f} s, {sum(self.faults.counts.values())} faults", flush=True)

    @staticmethod
    def _contradictions(evidence):
        return violations(evidence)

    def _start(self):
        for register in self.registers:
            register.start()
        for register in self.registers:
            register.wait()
            register.line.start()
        self.service.start()
        self.service.wait()

    def _settle(self):
        """What is under way comes to its end; for what is unknown the same id is posted again, as clients do."""
        self.service.wait()
        end = time.monotonic() + self.SETTLING
        while time.monotonic() < end:
            open_ones = self.service.documents("&state=queued,running,unknown")
            asked = [one for one in open_ones if one["state"] == "unknown" and self._may_be_asked(one)]
            if len([one for one in open_ones if one["state"] != "unknown"]) + len(asked) == 0 and self._all_ready():
                return []
            for one in asked:
                self._ask_again(one)
            time.sleep(0.5)
        return [f"{one['name']} did not come back: {one['state']}, {one['waiting']}, {one['waitingText']}"
                for one in self.service.registers() if one["state"] != "ready"]

    def _may_be_asked(self, document):
        """The register may still tell what has become of it."""
        return document["kind"] not in WITHOUT_WITNESS

    def _all_ready(self):
        registers = self.service.registers()
        return registers and all(one["state"] == "ready" for one in registers)

    def _ask_again(self, document):
        order = self.ledger.orders.get(document["id"])
        if order is None:
            # A report of the service's own, which asks itself.
            return
        place = order.place if order.pool else f"registers/{document['register']}"
        self.service.ask("POST", f"/v1/{place}/documents", order.body, Prefer="wait=5")

    def _evidence(self):
        journal = {one["id"]: one for one in self.service.documents()}
        (self.folder / "journal.json").write_text(json.dumps(journal, ensure_ascii=False, indent=1))
        drives = {register.name: register.documents() for register in self.registers}
        (self.folder / "drives.json").write_text(json.dumps(drives, ensure_ascii=False, indent=1))
        with open(self.folder / "told.txt", "w", encoding="utf-8") as file:
            file.writelines(f"{one}\n" for one in self.ledger.told)
        drawers = {register.name: register.drawer() for register in self.registers}
        return Evidence(self.ledger.orders, self.ledger.by_document(), journal, drives, drawers, self._unfenced(), self.LATENESS)

    @staticmethod
    def _unfenced():
        return frozenset()

    def _figures(self, evidence, wrong, seconds):
        journal = evidence.journal
        states = collections.Counter(
            one["state"] if one["state"] != "notIssued" else one["reason"] for one in journal.values())
        told = collections.Counter(one.state or one.status or "none" for one in self.ledger.told)
        return {
            "seed": self.seed, "seconds": round(seconds, 1), "documents": self.count, "accepted": len(journal),
            "requests": len(self.ledger.told), "given_up": self.clients.given_up, "told": dict(told),
            "states": dict(states), "receipts": sum(one["type"] == 3 for own in evidence.drives.values() for one in own),
            "faults": {**self.faults.counts, "cut": sum(len(one.line.cuts) for one in self.registers)},
            "bounds": {"cut_short": int(self._is_cut_short)}, "violations": wrong}

    def _stop(self):
        self.clients.is_ended = True
        self.service.program.end()
        for register in self.registers:
            register.stop()


class ServiceBatch(Batch):
    """With one service."""

    def __init__(self, programs, folder, seed, documents, silences):
        registers = [Register(programs.emulator, folder, place) for place in range(REGISTERS)]
        super().__init__(folder, seed, documents, registers, Service(programs.frserver, programs.plugin, folder, registers))
        self.faults = Faults(self.service, registers, drawn(seed, "faults"), silences, 2)
