"""Whether registers, journal and clients' beliefs agree, document by document."""

import collections
import dataclasses

from ledger import is_firm, latest_arrival, seconds
from registers import kopecks

CLOSING = 5
RECEIPT = 3
# They leave no trace in the fiscal drive or in counters over both protocols, so nobody can be asked for them.
WITHOUT_WITNESS = ("xReport", "text")
# They stand in the fiscal drive under a number of their own.
NUMBERED = ("sell", "sellReturn", "zReport", "openShift")


@dataclasses.dataclass
class Evidence:
    """orders and told by id, the journal's documents by id; of each register its drive's documents and the cash in
    its drawer. Unfenced registers are known to be worked by others, too: the journal may have no number of what they issued,
    and a document whose owner was frozen may stay unknown, for a person to say. A request that was given up may have come
    to a service so many seconds later: one that stands still reads it when it goes on."""

    orders: dict
    told: dict
    journal: dict
    drives: dict
    drawers: dict
    unfenced: frozenset = frozenset()
    lateness: float = 5


def violations(evidence):
    checks = (nothing_waits, nothing_lost, nothing_twice, nothing_made_up, nothing_late, cash_agrees, beliefs_hold)
    return [told for check in checks for told in check(evidence)]


def is_for_nobody_to_say(evidence, one):
    """What left nothing that could be asked for, or is a person's case with no number to tell."""
    return one["state"] == "unknown" and (one["kind"] in WITHOUT_WITNESS or (
        one["kind"] not in NUMBERED and one["register"] in evidence.unfenced))


def nothing_waits(evidence):
    """At the end all is known that anybody can know."""
    for one in evidence.journal.values():
        if one["state"] not in ("issued", "notIssued") and not is_for_nobody_to_say(evidence, one):
            yield f"{one['id']} ({one['kind']}, {one['register']}) is {one['state']} at the end"


def nothing_lost(evidence):
    for name, told in evidence.told.items():
        if name not in evidence.journal and any(one.is_known for one in told):
            yield f"{name}: a client was told of it, the journal does not know it"


def receipts(evidence):
    """Each with its register."""
    for register, documents in evidence.drives.items():
        for document in documents:
            if document["type"] == RECEIPT:
                yield register, document


def number_of(evidence, row):
    """Nothing where nobody can know it."""
    known = row.get("documentNumber")
    return known if known or row.get("register") in evidence.unfenced else -1


def nothing_twice(evidence):
    """Each receipt of a register is issued, under its number, once; and nothing is issued that no register has."""
    wanted = {order.total: order for order in evidence.orders.values() if order.kind in ("sell", "sellReturn")}
    made = collections.Counter()
    for register, document in receipts(evidence):
        order = wanted.get(kopecks(document["total"]))
        where = f"{register} document {document['number']}"
        if order is None:
            yield f"{where} over {document['total']} was ordered by nobody"
            continue
        made[order.id] += 1
        row = evidence.journal.get(order.id, {"state": "missing"})
        found = (row["state"], row.get("register"), number_of(evidence, row) or document["number"])
        if found != ("issued", register, document["number"]):
            yield f"{where} is {order.id}, of which the journal says {found}"
    for name, row in evidence.journal.items():
        count = made[name]
        if count > 1:
            yield f"{name} is on the registers {count} times"
        if row["state"] == "issued" and name in evidence.orders and count == 0 and row["kind"] in (
                "sell", "sellReturn"):
            yield f"{name} is issued, and on no register"


def nothing_made_up(evidence):
    """Z reports are told by their numbers alone."""
    for register, documents in evidence.drives.items():
        made = [one["number"] for one in documents if one["type"] == CLOSING]
        known = [one["documentNumber"] for one in evidence.journal.values()
                 if (one["register"], one["kind"], one["state"]) == (register, "zReport", "issued")]
        if register in evidence.unfenced and len(made) == len(known):
            known = [told for told in known if told]
            made = [one for one in made if one in known]
        if sorted(made) != sorted(known, key=lambda told: told or 0):
            yield f"{register} has the Z reports {sorted(made)}, the journal {sorted(known)}"


def nothing_late(evidence):
    """A document is begun before its time is over, and printed between its beginning and its end."""
    printed = {(register, one["number"]): seconds(one["dateTime"]) for register, one in receipts(evidence)}
    for name, row in evidence.journal.items():
        if row["state"] != "issued" or row["startBefore"] is None:
            continue
        begun, limit = seconds(row["begun"]), seconds(row["startBefore"])
        if begun > limit:
            yield f"{name} was begun {begun - limit:.3f} s after its time"
        if latest := latest_start(evidence, name):
            if begun > latest:
                yield f"{name} was begun {begun - latest:.3f} s after the time that its client gave"
        time = printed.get((row["register"], row["documentNumber"]))
        if time is not None and not begun - 1 <= time <= seconds(row["settled"]):
            yield f"{name} was printed at {time}, outside {row['begun']} to {row['settled']}"


def latest_start(evidence, name):
    """As the client counts it."""
    order = evidence.orders.get(name)
    if order is None or order.start_before is None:
        return None
    ends = [latest_arrival(one, evidence.lateness) for one in evidence.told.get(name, ()) if one.is_post]
    return max(ends) + order.start_before if ends else None


def cash_agrees(evidence):
    """Cash in and out is in no fiscal document, but in the drawer."""
    signs = {"sell": 1, "cashIn": 1, "sellReturn": -1, "cashOut": -1}
    moved = {register: collections.defaultdict(list) for register in evidence.drawers}
    for name, row in evidence.journal.items():
        if name in evidence.orders and row["register"] in moved:
            moved[row["register"]][row["state"]].append(signs.get(row["kind"], 0) * evidence.orders[name].total)
    for register, drawer in evidence.drawers.items():
        expected = sum(moved[register]["issued"])
        possible = {expected}
        for sum_ in moved[register]["unknown"]:
            possible |= {one + sum_ for one in possible}
        if drawer not in possible:
            yield f"{register} has {drawer} kopecks in its drawer, by the journal it would be {expected}"


def beliefs_hold(evidence):
    for name, told in evidence.told.items():
        row = evidence.journal.get(name)
        if row is None:
            continue
        for belief in told:
            if belief.state == "issued":
                seen = (belief.drive, belief.number)
                now = (row["drive"], row["documentNumber"])
                if row["state"] != "issued" or seen != now:
                    yield f"{name} was told to be issued as {seen}, and is {row['state']} as {now}"
            elif belief.state == "notIssued":
                yield from refusal_holds(evidence, belief, told, row)


def refusal_holds(evidence, belief, told, row):
    if is_firm(belief, told, evidence.lateness) and row["state"] != "notIssued":
        yield f"{belief.id} was told to be not issued ({belief.reason}) in the end, and is {row['state']}"
    order = evidence.orders.get(belief.id)
    for _, document in receipts(evidence):
        if order is None or kopecks(document["total"]) != order.total or belief.settled is None:
            continue
        if seconds(document["dateTime"]) + 1 < seconds(belief.settled):
            yield f"{belief.id} was told to be not issued when it had been printed at {document['dateTime']}"
