"""The figures of a run as the documents have them."""

import collections

ROWS = (
    ("documents that clients wanted", "documents"),
    ("requests of clients", "requests"),
    ("requests that were given up, or ended without an answer", "told.none"),
    ("refused by a service that was stopping (503)", "told.503"),
    ("documents in the journal", "accepted"),
    ("issued", "states.issued"),
    ("receipts on the registers", "receipts"),
    ("not issued: expired", "states.expired"),
    ("not issued: withdrawn", "states.deleted"),
    ("not issued: refused by the register", "states.refused"),
    ("not issued, as the register told later", "states.settled"),
    ("unknown in the meantime (answers)", "told.unknown"),
    ("unknown at the end (X reports and texts)", "states.unknown"),
    ("lines cut by hang-up", "faults.cut"),
    ("lines silent for 15 to 75 s", "faults.silence"),
    ("registers killed", "faults.register"),
    ("workers killed", "faults.worker"),
    ("services killed", "faults.service_kill"),
    ("services stopped and started", "faults.service_stop"),
    ("registers without paper", "faults.paper"),
    ("two registers changed ports", "faults.swap"),
    ("batches in which faults ended before the clients", "bounds.cut_short"),
    ("violations", "violations"),
    ("minutes of its batches together", "minutes"),
)


def total(batches):
    sums = collections.Counter()
    for batch in batches:
        sums["violations"] += len(batch["violations"])
        sums["seconds"] += batch["seconds"]
        for name, value in batch.items():
            if isinstance(value, dict):
                for part, count in value.items():
                    sums[f"{name}.{part}"] += count
            elif name in ("documents", "accepted", "requests", "receipts"):
                sums[name] += value
    sums["minutes"] = round(sums["seconds"] / 60, 1)
    return sums


def table(sums, rows):
    """Faults of which that is known have a column of how many met a document that was begun and not settled."""
    met = any(name.startswith("met.") for name in sums)

    def line(text, name):
        meetings = f" {sums[name.replace('faults.', 'met.')] if name.startswith('faults.') else ''} |" if met else ""
        return f"| {text} | {sums[name]} |{meetings}"
    lines = [line(text, name) for text, name in rows]
    known = {name for _, name in rows}
    lines += [line(name, name) for name, _ in sorted(sums.items())
             if name.startswith("states.") and name not in known]
    head = ("| | | met a document |", "|---|--:|--:|") if met else ("| | |", "|---|--:|")
    return "\n".join([*head, *lines])
