"""What is spent: processor time of processes, and the database's own account."""

import contextlib
import os
from pathlib import Path

from programs import children

TICKS = os.sysconf("SC_CLK_TCK")


def processor_seconds(processes):
    """Of these, with their children that have ended."""
    return sum(sum(map(int, _stat(one)[11:15])) for one in processes) / TICKS


def _stat(process):
    try:
        return Path(f"/proc/{process}/stat").read_text(encoding="utf-8").rsplit(")", 1)[1].split()
    except OSError:
        return ["0"] * 15


def busy_share(before, after):
    """Of all processors, between two moments of machine_ticks."""
    idle, whole = after[0] - before[0], after[1] - before[1]
    return 1 - idle / whole


def machine_ticks():
    """Idle, all."""
    ticks = [int(one) for one in Path("/proc/stat").read_text(encoding="ascii").split("\n", 1)[0].split()[1:9]]
    return ticks[3] + ticks[4], sum(ticks)


def memory(processes):
    """Proportional set size, MB."""
    whole = 0
    for one in processes:
        # A server process of a question that was asked a moment ago is gone.
        with contextlib.suppress(OSError):
            text = Path(f"/proc/{one}/smaps_rollup").read_text(encoding="ascii")
            whole += next(int(line.split()[1]) for line in text.splitlines() if line.startswith("Pss:"))
    return whole / 1024


class Costs:
    """From its making until they are asked for."""

    def __init__(self, database, services):
        self._database = database
        self._services = services
        database.execute("SELECT pg_stat_statements_reset()")
        self._log = self._wal()
        self._size = self._disk()
        self._machine = machine_ticks()
        self._before = self._processor()

    def _groups(self):
        services = [one.program.process.pid for one in self._services]
        server = self._database.server.pid
        return {"service": services, "worker": [child for one in services for child in children(one)],
                "postgres": [server, *children(server)], "client": [os.getpid()]}

    def _processor(self):
        return {name: processor_seconds(processes) for name, processes in self._groups().items()}

    def _wal(self):
        return self._database.ask("SELECT pg_current_wal_lsn() - '0/0'::pg_lsn AS bytes")[0]["bytes"]

    def _disk(self):
        return self._database.ask("SELECT pg_database_size(current_database()) AS bytes")[0]["bytes"]

    def taken(self):
        after = self._processor()
        spent = {f"{name}_cpu": after[name] - self._before[name] for name in after}
        # Its own questions are those of this measurement, few and far between.
        account = self._database.ask(
            "SELECT sum(total_exec_time + total_plan_time) / 1000 AS seconds, sum(calls) AS calls, "
            "sum(calls) FILTER (WHERE query = 'COMMIT') AS commits FROM pg_stat_statements")[0]
        return {**spent, "database": account["seconds"], "calls": account["calls"], "commits": account["commits"],
                "wal": self._wal() - self._log, "disk": self._disk() - self._size, "busy": busy_share(self._machine, machine_ticks())}

    def dearest(self, count=12):
        """The statements that took most of it."""
        return self._database.ask(
            "SELECT query, calls, total_exec_time + total_plan_time AS ms FROM pg_stat_statements "
            f"ORDER BY total_exec_time + total_plan_time DESC LIMIT {count}")

    def connections(self):
        """Of services and workers, without the one that asks."""
        return self._database.ask("SELECT count(*) AS all FROM pg_stat_activity WHERE backend_type = 'client backend' "
                                  "AND pid <> pg_backend_pid()")[0]["all"]

    def memory(self):
        return {name: memory(processes) for name, processes in self._groups().items()}
