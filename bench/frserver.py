#!/usr/bin/python3
"""Measures frserver: what it adds to a sale, many registers at once, a long journal, memory. Ends with a table as Markdown.

Usage: bench/frserver.py BIN-FOLDER PLUGIN [PART ...]   (parts: sale, registers, journal; all without one)
Exit status 1 when an aim is missed."""

import contextlib
import http.client
import json
import os
import re
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import threading
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path += [str(ROOT / "tests"), str(ROOT / "tests" / "server")]
from figures import Table, percentile
from service import Service
from softwareregister import SoftwareRegister

BIN = Path(sys.argv[1])
os.environ |= {"FRSERVER": str(BIN / "frserver"), "FRSPF_PLUGIN": sys.argv[2]}
BAUD = 115200
PROTOCOLS = ("HEX", "XML")
SALES = {"HEX": 400, "XML": 200}
# A shop's receipt, and the shortest one, with which the journal and the processors have most to do.
LOADS, POSITIONS, SECONDS = (1, 5, 20), {"HEX": (10, 1), "XML": (10,)}, 12
DOCUMENTS, QUESTIONS = 1_000_000, 3000
SALE = json.loads((ROOT / "examples" / "sale.json").read_text(encoding="utf-8"))


def measure(*arguments):
    return json.loads(subprocess.run([BIN / "servicebench", *map(str, arguments)], check=True, stdout=subprocess.PIPE).stdout)


def port_of(service):
    return service.url.rstrip("/").rsplit(":", 1)[1]


@contextlib.contextmanager
def running(folder, lines, protocol):
    """The service with registers r0, r1 ... on these ports, once they can be reached."""
    service = Service(folder, {f"r{number}": f"tcp:127.0.0.1:{port}" for number, port in enumerate(lines)}, protocol)
    try:
        end = time.monotonic() + 120
        while any(one["state"] != "ready" for one in service.ask("GET", "/v1/registers")["registers"]):
            if time.monotonic() > end:
                sys.exit("the registers are not reached")
            time.sleep(0.1)
        yield service
    finally:
        service.stop()


@contextlib.contextmanager
def serial_lines(ports):
    """Each of the ports behind a line that holds the baud rate in both directions."""
    process = subprocess.Popen([BIN / "servicebench", "relay", str(BAUD), *map(str, ports)],
                               stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        yield process.stdout.readline().split()
    finally:
        process.stdin.close()
        process.wait(10)


def measure_sale(table, folder):
    for protocol in PROTOCOLS:
        place = folder / protocol
        place.mkdir()
        with SoftwareRegister(str(BIN / "spf-emulator"), "--registers", "2") as registers:
            ports = [port for _, port in registers.lines]
            with running(place, ports[:1], protocol) as service:
                told = measure("compare", os.environ["FRSPF_PLUGIN"], f"tcp:127.0.0.1:{ports[1]}", protocol,
                               place / "direct.sqlite", port_of(service), "r0", SALES[protocol])
        direct, through = told["direct"], told["service"]
        usual = statistics.median(direct)
        table.add(f"{protocol} sale made directly, median", usual, "ms")
        table.add(f"{protocol} sale made directly, p99", percentile(direct, 0.99), "ms")
        table.add(f"{protocol} sale through the service, median", statistics.median(through), "ms")
        table.add(f"{protocol} sale through the service, p99", percentile(through, 0.99), "ms")
        table.add(f"{protocol}: what the service adds, median", statistics.median(through) - usual, "ms", 5)
        # Stricter than to compare with the slowest direct ones.
        table.add(f"{protocol}: what the service adds to the median, p99", percentile(through, 0.99) - usual, "ms", 20)


def memory_of(service):
    """Proportional set size of the service and its workers, MiB; how many workers; that of the service alone."""
    workers = service.workers()
    sizes = []
    for pid in (service.process.pid, *workers):
        rollup = Path(f"/proc/{pid}/smaps_rollup").read_text(encoding="ascii")
        sizes.append(int(re.search(r"^Pss:\s+(\d+)", rollup, re.MULTILINE)[1]) / 1024)
    return sum(sizes), len(workers), sizes[0]


def measure_load(table, folder, protocol, positions):
    alone = None
    name = f"{protocol}, {positions} position{'s' * (positions > 1)} a sale"
    for count in LOADS:
        place = folder / f"{protocol}-{positions}-{count}"
        place.mkdir()
        # Without a control interface: keeping exchanges and pages for it takes a third of the registers' processor time, and
        # real registers have processors of their own.
        with SoftwareRegister(str(BIN / "spf-emulator"), "--registers", str(count), panel=None) as registers, \
                serial_lines([port for _, port in registers.lines]) as lines, running(place, lines, protocol) as service:
            told = measure("load", port_of(service), SECONDS, positions, *(f"r{number}" for number in range(count)))
            rate = told["sales"] / told["seconds"]
            table.add(f"{name}, registers {count}: sales", rate, "a second")
            alone = alone or rate
            if count > 1:
                aim = 0.95 if positions > 1 else None
                table.add(f"{name}, registers {count}: to {count} times one", rate / (count * alone), "", aim, least=True)
            if count == LOADS[-1]:
                whole, workers, own = memory_of(service)
                table.add(f"{name}, service and {workers} workers: memory (PSS)", whole, "MB", 160)
                table.add(f"{name}, of that the service", own, "MB")


def measure_registers(table, folder):
    for protocol in PROTOCOLS:
        for positions in POSITIONS[protocol]:
            measure_load(table, folder, protocol, positions)


def lengthen(journal):
    """Copies of the sales that were made, with ids of their own, one each half a minute until now: through the store, which
    writes each to the disk several times, this would take hours."""
    moment = f"strftime('%Y-%m-%dT%H:%M:%fZ', 'now', ((i - {DOCUMENTS}) * 30) || ' seconds')"
    with contextlib.closing(sqlite3.connect(journal, isolation_level=None)) as base:
        def count(question):
            return base.execute(f"SELECT {question}").fetchone()[0]

        base.execute("PRAGMA journal_mode = OFF")
        base.execute("PRAGMA synchronous = OFF")
        base.execute("PRAGMA cache_size = -500000")
        base.execute("CREATE TEMP TABLE originals AS SELECT row_number() OVER () - 1 AS place, id FROM documents WHERE kind = 'sell'")
        base.execute("CREATE UNIQUE INDEX originals_by_place ON originals (place)")
        sales, known = count("count(*) FROM originals"), count("count(*) FROM documents")
        own = {"id": "printf('bench:%08d', i)", "digest": "hex(randomblob(32))", "last_attempt": f"i + 1 - {known} + {count('max(sequence) FROM attempts')}",
               "document": f"i + {DOCUMENTS}", **dict.fromkeys(("accepted", "begun", "settled", "queued", "ended"), moment)}
        base.execute("BEGIN")
        for table in "documents", "attempts":
            columns = [row[1] for row in base.execute(f"PRAGMA table_info({table})") if row[1] != "sequence"]
            base.execute(
                f"WITH RECURSIVE n(i) AS (SELECT {known} UNION ALL SELECT i + 1 FROM n WHERE i + 1 < {DOCUMENTS}) "
                f"INSERT INTO {table} ({', '.join(columns)}) SELECT {', '.join(own.get(column, 'one.' + column) for column in columns)} "
                f"FROM n CROSS JOIN originals ON place = i % {sales} CROSS JOIN {table} AS one ON one.id = originals.id")
        base.execute("COMMIT")
        base.execute("PRAGMA journal_mode = WAL")
        return count("count(*) FROM documents")


class Asker:
    def __init__(self, service):
        self.connection = http.client.HTTPConnection(f"127.0.0.1:{port_of(service)}", timeout=120)

    def ask(self, path):
        begun = time.monotonic()
        self.connection.request("GET", path)
        with self.connection.getresponse() as response:
            body = json.loads(response.read())
            if response.status != 200:
                sys.exit(f"{path}: {response.status} {body}")
        return (time.monotonic() - begun) * 1000, body


def times_by_id(asker):
    # Far apart, so that hardly any page of the file is met twice; the first ones are those that were copied.
    behind = 1000
    return [asker.ask(f"/v1/documents/bench:{behind + number * 7919 % (DOCUMENTS - behind):08d}")[0] for number in range(QUESTIONS)]


def search_for_ever(service, is_over, told):
    asker = Asker(service)
    while not is_over.is_set():
        spent, body, pages = 0, {"next": None}, 0
        while pages == 0 or body["next"] and not body["documents"]:
            took, body = asker.ask("/v1/documents?text=no-such-text" + (f"&cursor={body['next']}" if body["next"] else ""))
            spent, pages = spent + took, pages + 1
        told.append(spent)


def measure_journal(table, folder):
    with SoftwareRegister(str(BIN / "spf-emulator")) as registers:
        ports = [port for _, port in registers.lines]
        with running(folder, ports, "HEX") as service:
            for number in range(100):
                answer = service.ask("POST", "/v1/registers/r0/documents", SALE, Idempotency_Key=f"first:{number:04d}", Prefer="wait=30")
                assert answer.status == 201, answer
        begun = time.monotonic()
        count = lengthen(folder / "journal.sqlite")
        size = (folder / "journal.sqlite").stat().st_size / 1e6
        print(f"a journal of {count} documents, {size:.0f} MB, made in {time.monotonic() - begun:.0f} s", flush=True)
        begun = time.monotonic()
        with running(folder, ports, "HEX") as service:
            table.add("start with a million documents until ready", time.monotonic() - begun, "s")
            asker = Asker(service)
            times = times_by_id(asker)
            table.add("GET by id of a million documents, median", statistics.median(times), "ms")
            table.add("GET by id of a million documents, p99", percentile(times, 0.99), "ms", 5)
            for query in ("limit=50", "limit=50&state=notIssued", "register=r0&state=unknown", "since=2100-01-01T00:00:00Z"):
                took, _ = asker.ask("/v1/documents?" + query)
                table.add(f"list of {query}", took, "ms")
            is_over, searches = threading.Event(), []
            searching = threading.Thread(target=search_for_ever, args=(service, is_over, searches))
            searching.start()
            times = times_by_id(asker)
            is_over.set()
            searching.join()
            table.add("GET by id while all of it is searched for a text, median", statistics.median(times), "ms")
            table.add("GET by id while all of it is searched for a text, p99", percentile(times, 0.99), "ms", 20)
            table.add("GET by id while all of it is searched for a text, longest", max(times), "ms")
            table.add("a search for a text that is nowhere", statistics.median(searches), "ms")


def main():
    parts = {"sale": measure_sale, "registers": measure_registers, "journal": measure_journal}
    table = Table()
    for name in sys.argv[3:] or parts:
        # Beside the build: a folder for temporary files may be memory.
        with tempfile.TemporaryDirectory(dir=BIN.parent) as folder:
            parts[name](table, Path(folder))
    table.print()
    sys.exit(table.is_missed)


main()
