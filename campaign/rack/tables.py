"""What the database itself has, beside what the services tell of it."""

import collections
import dataclasses

SETTLED = ("issued", "notIssued")
# Between the moment that an attempt has for its end and the end of the transaction that says so.
WRITING = 0.1
DOCUMENTS = "SELECT id, register, state, drive, document, attempts FROM frspf.documents"
IDS = "SELECT id FROM frspf.ids"
ATTEMPTS = ("SELECT a.id, a.number, d.register, a.epoch, extract(epoch FROM a.begun)::float8 AS begun, "
            "extract(epoch FROM a.ended)::float8 AS ended FROM frspf.attempts a JOIN frspf.documents d USING (accepted, id) "
            "ORDER BY a.sequence")
LEASES = "SELECT register, epoch FROM frspf.leases"


@dataclasses.dataclass
class Tables:
    """Rows, each as an object."""

    documents: list
    ids: list
    attempts: list
    leases: list

    @staticmethod
    def of(database):
        return Tables(*map(database.ask, (DOCUMENTS, IDS, ATTEMPTS, LEASES)))

    def takeovers(self):
        """How often a register had another owner."""
        return sum(one["epoch"] - 1 for one in self.leases)


def disagreements(tables, journal):
    """Of the tables among each other, and with what the services tell."""
    yield from ids_agree(tables)
    yield from services_tell_the_table(tables, journal)
    yield from attempts_agree(tables)


def ids_agree(tables):
    documents = collections.Counter(one["id"] for one in tables.documents)
    ids = {one["id"] for one in tables.ids}
    for name, count in documents.items():
        if count > 1:
            yield f"{name} stands in the table {count} times"
        if name not in ids:
            yield f"{name} stands in the table, and its id is not kept"
    for name in sorted(ids - documents.keys()):
        yield f"{name} is an id without a document"


def services_tell_the_table(tables, journal):
    for name in sorted({one["id"] for one in tables.documents} ^ journal.keys()):
        yield f"{name} is not both in the table and among what the services tell"
    for one in tables.documents:
        told = journal.get(one["id"], {})
        stands = (one["state"], one["register"] or None, one["drive"] or None, one["document"] or None)
        if told and stands != (told["state"], told["register"] or None, told["drive"], told["documentNumber"]):
            yield f"{one['id']} stands in the table as {stands}, and is told otherwise"


def attempts_agree(tables):
    """None is left open, and whoever has lost a register has begun nothing behind its new owner."""
    documents = {one["id"]: one for one in tables.documents}
    latest = {}
    for one in tables.attempts:
        document = documents[one["id"]]
        name = f"attempt {one['number']} at {one['id']}"
        if document["state"] in SETTLED and one["ended"] is None:
            yield f"{name} has no end, and the document is {document['state']}"
        if (document["state"], document["attempts"]) != ("issued", 1) or one["epoch"] is None:
            # It may have been another register's.
            continue
        if one["epoch"] < latest.get(one["register"], 0):
            yield f"{name} was begun under lease {one['epoch']} of {one['register']} behind one of {latest[one['register']]}"
        latest[one["register"]] = one["epoch"]


def met(faults, attempts):
    """By kind, how many of the faults met a register with a document that was begun and not settled."""
    return collections.Counter(one.kind for one in faults if under_way(one, attempts))


def overtaken(faults, attempts):
    """By kind, how many stood still while another owner settled what they were at."""
    return collections.Counter(
        one.kind for one in faults
        if any(attempt["ended"] and one.time + WRITING < attempt["ended"] < one.time + one.seconds
               for attempt in under_way(one, attempts)))


def under_way(fault, attempts):
    return [one for one in attempts if one["register"] in fault.registers and one["begun"] <= fault.time
            and (one["ended"] is None or fault.time < one["ended"] + WRITING)]
