#!/usr/bin/python3
"""The campaign's verdict over the service finds each fault that is planted, and none where all agree."""

import copy
import dataclasses
import sys
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
sys.path[:0] = [str(Path(__file__).resolve().parents[2] / "campaign" / one) for one in ("service", "rack")]
# pylint: disable=wrong-import-position
from ledger import Order, Told, seconds  # noqa: E402
from rackfaults import Fault  # noqa: E402
from tables import Tables, disagreements, met, overtaken  # noqa: E402
from verdict import Evidence, violations  # noqa: E402

NOON = "2026-03-01T12:00:00"
DRIVE = "9999000000000001"


def row(name, kind, state, **more):
    return {"id": name, "kind": kind, "register": "till1", "state": state, "reason": None, "drive": DRIVE,
            "documentNumber": None, "begun": f"{NOON}.100Z", "settled": f"{NOON}.900Z",
            "startBefore": "2026-03-01T12:00:05.000Z", **more}


def told(name, state, number=None, sent=0.0, **more):
    return Told(name, True, seconds(f"{NOON}Z") + sent, seconds(f"{NOON}Z") + sent + 1, 201 if number else 409,
                state, number=number, drive=DRIVE, **more)


def sound():
    """One sale, one that expired, one that nobody was told of, cash and a Z report."""
    orders = [Order("sale:0001", "sell", 101, "till1", "patient"),
              Order("sale:0002", "sell", 102, "till1", "patient", 1),
              Order("sale:0003", "sell", 103, "till1", "gone"),
              Order("cash:0001", "cashIn", 500, "till1", "patient")]
    journal = [row("sale:0001", "sell", "issued", documentNumber=3), row("sale:0002", "sell", "notIssued"),
               row("cash:0001", "cashIn", "issued"), row("shift:0001", "zReport", "issued", documentNumber=4)]
    documents = [{"number": 2, "type": 2, "dateTime": NOON}, {"number": 3, "type": 3, "total": "1.01", "dateTime": NOON},
                 {"number": 4, "type": 5, "dateTime": NOON}]
    for document in documents:
        document["dateTime"] += "+00:00"
    return Evidence(
        {one.id: one for one in orders},
        {"sale:0001": [told("sale:0001", "issued", 3)],
         "sale:0002": [told("sale:0002", "notIssued", reason="expired", settled=f"{NOON}.900Z")],
         "sale:0003": [Told("sale:0003", True, 0, 1)]},
        {one["id"]: one for one in journal}, {"till1": documents}, {"till1": 601})


def printed(register="till1", **changes):
    """The sale's document once more, with these changes."""
    def plant(evidence):
        evidence.drives.setdefault(register, []).append({**evidence.drives["till1"][1], **changes})
    return plant


def belief(name, **changes):
    def plant(evidence):
        evidence.told[name][0] = dataclasses.replace(evidence.told[name][0], **changes)
    return plant


def journal(name, **changes):
    def plant(evidence):
        evidence.journal[name].update(changes)
    return plant


FAULTS = {
    "printed twice": (printed(number=5), "on the registers 2 times"),
    "printed on two registers": (printed("till2"), "on the registers 2 times"),
    "printed though it expired": (printed(number=5, total="1.02"), "of which the journal says ('notIssued'"),
    "printed, and nobody knows": (printed(number=5, total="1.03"), "of which the journal says ('missing'"),
    "printed for nobody": (lambda evidence: evidence.orders.pop("sale:0001"), "was ordered by nobody"),
    "issued, and on no register": (lambda evidence: evidence.drives["till1"].pop(1), "is issued, and on no register"),
    "a Z report too many": (printed(number=5, type=5), "Z reports [4, 5]"),
    "lost by the journal": (lambda evidence: evidence.journal.pop("sale:0002"), "the journal does not know it"),
    "the number that was told is another": (belief("sale:0001", number=2), "was told to be issued as"),
    "told to be issued": (belief("sale:0002", state="issued"), "was told to be issued as"),
    "told not to be issued": (belief("sale:0001", state="notIssued"), "was told to be not issued"),
    "told not to be issued when it was printed": (
        belief("sale:0001", state="notIssued", settled="2026-03-01T12:00:03.000Z"), "when it had been printed"),
    "begun after its time": (journal("sale:0001", startBefore=f"{NOON}.000Z"), "begun 0.100 s after its time"),
    "printed before it was begun": (journal("sale:0001", begun="2026-03-01T12:00:02.000Z"), "was printed at"),
    "cash twice": (lambda evidence: evidence.drawers.update(till1=1101), "has 1101 kopecks in its drawer"),
    "a sale that is unknown": (journal("sale:0002", state="unknown"), "is unknown at the end"),
    "cash that is unknown": (journal("cash:0001", state="unknown"), "is unknown at the end"),
    "cash that waits": (journal("cash:0001", state="queued"), "is queued at the end"),
}


class Verdict(unittest.TestCase):
    def test_all_agree(self):
        self.assertEqual([], violations(sound()))

    def test_faults(self):
        for name, (plant, expected) in FAULTS.items():
            with self.subTest(name):
                evidence = copy.deepcopy(sound())
                plant(evidence)
                self.assertIn(expected, "\n".join(violations(evidence)))

    def test_what_comes_later_is_no_contradiction(self):
        """Not issued, and then posted again: the second attempt is another one."""
        evidence = sound()
        evidence.told["sale:0001"].insert(0, told("sale:0001", "notIssued", sent=-5))
        self.assertEqual([], violations(evidence))

    def test_cash_of_which_nobody_can_know(self):
        """At a register that is no fence it may have been moved or not, and nothing else."""
        for drawer, is_found in ((601, False), (101, False), (301, True)):
            with self.subTest(drawer):
                evidence = sound()
                evidence.unfenced = frozenset({"till1"})
                evidence.journal["cash:0001"]["state"] = "unknown"
                evidence.drawers["till1"] = drawer
                self.assertEqual(is_found, bool(violations(evidence)))

    def test_what_was_begun_late_by_the_clients_clock(self):
        evidence = sound()
        evidence.orders["sale:0001"] = dataclasses.replace(evidence.orders["sale:0001"], start_before=0.05)
        evidence.journal["sale:0001"]["begun"] = "2026-03-01T12:00:01.500Z"
        self.assertIn("after the time that its client gave", "\n".join(violations(evidence)))


def tables(evidence):
    """As a database has what the journal tells; each document with one attempt, a second long, one behind the other."""
    issued = [one for one in evidence.journal.values() if one["state"] == "issued"]
    return Tables(
        [{"id": one["id"], "register": one["register"], "state": one["state"], "drive": DRIVE, "document": one["documentNumber"],
          "attempts": int(one["state"] == "issued")} for one in evidence.journal.values()],
        [{"id": one} for one in evidence.journal],
        [{"id": one["id"], "number": 1, "register": "till1", "epoch": 2, "begun": float(place), "ended": place + 1.0}
         for place, one in enumerate(issued)],
        [{"register": "till1", "epoch": 2}])


def change(table, place, **changes):
    return lambda made: getattr(made, table)[place].update(changes)


TABLE_FAULTS = {
    "a document in two months": (lambda made: made.documents.append(made.documents[0]), "stands in the table 2 times"),
    "an id that was not kept": (lambda made: made.ids.pop(), "its id is not kept"),
    "a document that was not kept": (lambda made: made.ids.append({"id": "sale:0004"}), "sale:0004 is an id without a document"),
    "one that is not told": (lambda made: made.documents.append({**made.documents[0], "id": "sale:0004"}), "is not both in the table"),
    "another end than is told": (change("documents", 0, state="notIssued"), "sale:0001 stands in the table as ('notIssued'"),
    "another number than is told": (change("documents", 0, document=4), "sale:0001 stands in the table as"),
    "an attempt without an end": (change("attempts", 0, ended=None), "has no end"),
    "begun by a former owner": (change("attempts", 1, epoch=1), "under lease 1 of till1 behind one of 2"),
}


class Rack(unittest.TestCase):
    def test_tables(self):
        evidence = sound()
        self.assertEqual([], list(disagreements(tables(evidence), evidence.journal)))
        for name, (plant, expected) in TABLE_FAULTS.items():
            with self.subTest(name):
                made = copy.deepcopy(tables(evidence))
                plant(made)
                self.assertIn(expected, "\n".join(disagreements(made, evidence.journal)))

    def test_what_faults_have_met(self):
        """An attempt from 0 to 1 and so on: during it, behind the last one, at another register."""
        attempts = tables(sound()).attempts
        for fault, is_met, is_overtaken in ((Fault("freeze", 0.5, ("till1",), 0.4), 1, 0), (Fault("freeze", 0.5, ("till1",), 2), 1, 1),
                                            (Fault("freeze", 9, ("till1",), 2), 0, 0), (Fault("freeze", 0.5, ("till2",), 2), 0, 0)):
            with self.subTest(fault):
                self.assertEqual((is_met, is_overtaken), (met([fault], attempts)["freeze"], overtaken([fault], attempts)["freeze"]))


if __name__ == "__main__":
    unittest.main()
