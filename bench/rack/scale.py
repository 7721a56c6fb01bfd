#!/usr/bin/python3
"""Measures a rack: services that share one PostgreSQL, with registers that take 3 s a receipt.

Usage: bench/rack/scale.py BIN-FOLDER BUILD [--registers 20,100,400] [--processes 1,2,4,8] [--seconds 60] [--waiting 100000]
Ends with a table as Markdown; exit status 1 when an aim is missed."""

import argparse
import sys
from pathlib import Path

sys.dont_write_bytecode = True
ROOT = Path(__file__).resolve().parents[2]
sys.path += [str(ROOT / "bench"), str(ROOT / "tests"), str(ROOT / "campaign" / "service"), str(ROOT / "tests" / "server")]
# pylint: disable=wrong-import-position
from database import Database  # noqa: E402
from figures import percentile  # noqa: E402
from rack import rack_of  # noqa: E402
from standins import RECEIPT_SECONDS, SoftwareRegisters, StandIns  # noqa: E402

LEAST_SHARE = 0.95
CLAIM_MS = 50
# More software registers would ask for more of the processors than what is measured.
MOST_SOFTWARE = 20
SETTINGS = ("shared_preload_libraries=pg_stat_statements", "pg_stat_statements.track_planning=on", "max_connections=1000",
            "shared_buffers=512MB", "max_wal_size=4GB", "log_line_prefix=%c ")


def options():
    def numbers(text):
        return [int(one) for one in text.split(",")]
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", type=Path)
    parser.add_argument("build", type=Path)
    parser.add_argument("--registers", type=numbers, default=[20, 100, 400])
    parser.add_argument("--processes", type=numbers, default=[1, 2, 4, 8])
    parser.add_argument("--seconds", type=float, default=60)
    parser.add_argument("--waiting", type=int, default=100000)
    return parser.parse_args()


HEAD = ("| registers | processes | waiting | documents a second | of what registers can do | between two documents, ms: median | p99 "
        "| POST p99, ms | database, ms a document | statements | processor, ms a document: PostgreSQL | services | workers | clients "
        "| WAL, KB a document | disk | processors busy | memory, MB: PostgreSQL | services | workers | connections |\n|" + "--:|" * 21)


def row(count, processes, told, waiting):
    each = told["each"]
    cells = [count, processes, waiting or "few", f"{told['rate']:.2f}", f"{told['share']:.3f}", f"{told['pause']:.1f}", f"{told['pause_p99']:.1f}",
             f"{told['post_p99']:.1f}", f"{each['database'] * 1000:.2f}", f"{each['calls']:.1f}",
             *(f"{each[name + '_cpu'] * 1000:.2f}" for name in ("postgres", "service", "worker", "client")),
             f"{each['wal'] / 1024:.1f}", f"{each['disk'] / 1024:.1f}", f"{told['busy']:.0%}",
             *(f"{told['memory'][name]:.0f}" for name in ("postgres", "service", "worker")), told["connections"]]
    return f"| {' | '.join(map(str, cells))} |"


class Measurement:
    def __init__(self, given, database):
        self._given = given
        self._database = database
        self.rows = []
        self.claims = []
        self.is_missed = False

    def run(self):
        for count in self._given.registers:
            for processes in self._given.processes:
                told = self._measure(SoftwareRegisters if count <= MOST_SOFTWARE else StandIns, count, processes)
            if count <= MOST_SOFTWARE:
                # That they cost the same.
                self._measure(StandIns, count, processes)
        if self._given.waiting:
            told = self._measure(StandIns, count, processes, self._given.waiting)
            self._judge_claims(told["claims"])
        for one in told["dearest"]:
            print(f"{one['ms']:10.1f} ms {one['calls']:8} {one['query'][:150]}")

    def _measure(self, kind, count, processes, waiting=0):
        made = kind(self._given.build, count)
        try:
            with rack_of(self._database, self._given.programs, made.plugin, made.registers, processes) as rack:
                if waiting:
                    rack.fill(waiting)
                print(f"{count} {kind.name}, {processes} processes: ready after {rack.start():.1f} s", flush=True)
                told = rack.measure(self._given.seconds, waiting > 0)
        finally:
            made.close()
        self.rows.append(row(f"{count} {kind.name}", processes, told, waiting))
        self.is_missed |= told["share"] < LEAST_SHARE
        print(self.rows[-1], flush=True)
        return told

    def _judge_claims(self, times):
        spent = percentile(times, 0.99)
        self.is_missed |= spent >= CLAIM_MS
        self.claims.append(f"With {self._given.waiting} documents waiting the database takes {percentile(times, 0.5):.2f} ms to give a "
                           f"register its next one, p99 {spent:.2f} ms ({len(times)} of them looked at; aim: below {CLAIM_MS}).")


def main():
    given = options()
    database = Database(*SETTINGS)
    try:
        database.execute("CREATE EXTENSION pg_stat_statements")
        measurement = Measurement(given, database)
        measurement.run()
    finally:
        database.close()
    print(f"\nRegisters take {RECEIPT_SECONDS} s a receipt.\n\n" + "\n".join([HEAD, *measurement.rows, "", *measurement.claims]))
    return 1 if measurement.is_missed else 0


if __name__ == "__main__":
    sys.exit(main())
