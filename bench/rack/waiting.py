"""A long queue, and how long the database takes to find the next document in it."""

import re

# Of all transactions: enough of them in a minute, and the log costs little.
SAMPLE = 0.2
DURATION = re.compile(r"^(\S+) LOG:  duration: ([\d.]+) ms  statement: (.*)")
# Of one whose plan the server keeps.
DETAIL = re.compile(r"^\S+ DETAIL:  prepare: (.*)")
# What a register is given of what waits: from a pool in a transaction, or of its own by one question.
CLAIM = re.compile(r"SKIP LOCKED|register = '[^']+'.* ORDER BY \S*sequence LIMIT 1", re.DOTALL)


def fill(database, count):
    """So many copies of the document waiting:0."""
    columns = [one["name"] for one in database.ask(
        "SELECT column_name AS name FROM information_schema.columns WHERE table_schema = 'frspf' AND table_name = 'documents'")]
    # Moments have milliseconds wherever they come from.
    now = "date_trunc('milliseconds', now())"
    own = {"id": "'waiting:' || n", "accepted": now, "queued": now, "sequence": "nextval('frspf.documents_sequence')",
           "state": "'queued'", "reason": "''", "attempts": "0", "drive": "''", "times": "0", "number_read": "true",
           **dict.fromkeys(("start_before", "begun", "settled", "document", "last_attempt", "claimed"), "NULL")}
    values = ", ".join(own.get(column, f"one.{column}") for column in columns)
    database.execute(f"""
        BEGIN;
        INSERT INTO frspf.documents ({', '.join(columns)})
            SELECT {values} FROM generate_series(1, {count}) AS n, frspf.documents AS one WHERE one.id = 'waiting:0';
        INSERT INTO frspf.ids (id, digest, accepted)
            SELECT id, digest, accepted FROM frspf.documents WHERE id LIKE 'waiting:%' AND id <> 'waiting:0';
        COMMIT;
        ANALYZE frspf.documents""")


class Claims:
    """Of the server's log, from its making on."""

    def __init__(self, database):
        self._database = database
        self._log = f"{database.folder}/log"
        self._sample(SAMPLE)
        with open(self._log, "rb") as log:
            self._from = log.seek(0, 2)

    def _sample(self, share):
        self._database.execute(f"ALTER SYSTEM SET log_transaction_sample_rate = {share}; SELECT pg_reload_conf()")

    def taken(self):
        """Milliseconds that each one took in the server, the commit with it."""
        self._sample(0)
        with open(self._log, encoding="utf-8", errors="replace") as log:
            log.seek(self._from)
            return list(claims_of(log))


def statements_of(log):
    """Session, milliseconds, text. A line begins with the session; what does not is the rest of a statement."""
    last = None
    for line in log:
        if found := DURATION.match(line):
            if last:
                yield last
            last = (found[1], float(found[2]), found[3])
        elif last and (detail := DETAIL.match(line)):
            last = (*last[:2], detail[1])
    if last:
        yield last


def claims_of(log):
    spent, has_claim = {}, {}
    for session, took, statement in statements_of(log):
        is_end = statement.startswith(("COMMIT", "ROLLBACK"))
        if statement.startswith("BEGIN"):
            spent[session], has_claim[session] = took, False
        elif session in spent:
            spent[session] += took
            has_claim[session] |= bool(CLAIM.search(statement))
            if is_end:
                total = spent.pop(session)
                if has_claim.pop(session):
                    yield total
        elif CLAIM.search(statement):
            yield took
