"""The figures of a run over a rack as the documents have them."""

from report import ROWS as SERVICE_ROWS

OF_ONE_SERVICE = ("faults.silence", "faults.swap")
ROWS = tuple(row for row in SERVICE_ROWS[:-2] if row[1] not in OF_ONE_SERVICE) + (
    ("services killed with their workers", "faults.group_kill"),
    ("killed where a document is begun", "faults.kill_begun"),
    ("stopped at random", "faults.freeze"),
    ("stopped where a document is begun", "faults.freeze_begun"),
    ("stopped before the closing write", "faults.freeze_close"),
    ("stopped where a document is settled", "faults.freeze_settled"),
    ("workers alone stopped", "faults.freeze_worker"),
    ("closing writes that came late", "faults.late_close"),
    ("PostgreSQL ended and started", "faults.database"),
    ("ways to the database cut", "faults.way_cut"),
    ("cut at a commit", "faults.cut_commit"),
    ("ways to the database that stood still", "faults.way_still"),
    ("documents that a person had to resolve", "faults.person"),
) + SERVICE_ROWS[-2:]
