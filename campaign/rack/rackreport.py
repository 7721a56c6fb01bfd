"""The figures of a run over a rack as the documents have them."""

from report import ROWS as SERVICE_ROWS

OF_ONE_SERVICE = ("faults.silence", "faults.swap")
ROWS = tuple(row for row in SERVICE_ROWS[:-3] if row[1] not in OF_ONE_SERVICE) + (
    ("services killed with their workers", "faults.group_kill"),
    ("killed where a document is begun", "faults.kill_begun"),
    ("groups stopped at random", "faults.freeze"),
    ("stopped where a document is begun, before or behind the commit", "faults.freeze_begun"),
    ("stopped when the receipt is open", "faults.freeze_opened"),
    ("stopped behind a position", "faults.freeze_item"),
    ("stopped before the closing write", "faults.freeze_close"),
    ("stopped behind the closing write, its answer unread", "faults.freeze_closed"),
    ("stopped where a document is settled, before or behind the commit", "faults.freeze_settled"),
    ("stopped, and the closing write came late", "faults.late_close"),
    ("of all groups stopped: beyond the lease", "rack.beyond"),
    ("of them: another owner settled their document before they went on", "rack.overtaken"),
    ("of them: stopped before the closing write", "rack.overtaken_close"),
    ("workers alone stopped", "faults.freeze_worker"),
    ("PostgreSQL ended as by a power cut, and started", "faults.database"),
    ("ways to the database cut", "faults.way_cut"),
    ("cut at a commit", "faults.cut_commit"),
    ("ways to the database that stood still", "faults.way_still"),
    ("registers that another owner took over", "rack.takeovers"),
    ("documents that a person had to resolve", "rack.person"),
) + SERVICE_ROWS[-3:]
