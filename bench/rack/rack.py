"""A rack to be measured: services over one database, each with its share of the registers."""

import contextlib
import json
import subprocess
import tempfile
import time
from pathlib import Path

from costs import Costs
from figures import percentile
from load import Poster
from programs import free_port
from service import Service
from standins import RECEIPT_SECONDS, Measured
from waiting import Claims, fill

ROOT = Path(__file__).resolve().parents[2]
SALE = json.loads((ROOT / "examples" / "sale.json").read_text(encoding="utf-8"))
# Documents that each register has waiting, so that it waits for none.
AHEAD = 3
PATIENCE = 300
POOL = "all"


def settings(share):
    """Of a service with these registers."""
    return {"service": {"queue-limit": 1000000}, f"pool {POOL}": {"registers": ",".join(one.name for one in share)}}


class Rack:
    def __init__(self, database, programs, folder, plugin, registers, processes):
        self.database = database
        self._programs, self._folder, self._plugin = programs, folder, plugin
        self.registers = registers
        database.execute("DROP SCHEMA IF EXISTS frspf CASCADE")
        self.services = []
        self.shares = [registers[place::processes] for place in range(processes)]
        for place, share in enumerate(self.shares):
            own = folder / f"service{place + 1}"
            own.mkdir()
            self.services.append(Service(programs / "frserver", plugin, own, share, database.url, settings(share)))
        subprocess.run([programs / "frserver", "--config", self.services[0].config, "migrate"], check=True)

    def start(self):
        """Until all registers can be worked; how long that takes."""
        begun = time.monotonic()
        for service in self.services:
            service.program.start()
        self._until(lambda: all(service.ask("GET", "/readyz", timeout=60) for service in self.services))
        self._until(lambda: self._ready() == len(self.registers))
        return time.monotonic() - begun

    def _ready(self):
        """How many registers their own service says to be so."""
        return sum(one["state"] in ("ready", "making") for service, share in zip(self.services, self.shares)
                   for one in service.registers() if one["name"] in {own.name for own in share})

    @staticmethod
    def _until(is_so):
        end = time.monotonic() + PATIENCE
        while not is_so():
            if time.monotonic() > end:
                raise RuntimeError("the rack does not come so far")
            time.sleep(0.5)

    def stop(self):
        for service in self.services:
            service.program.process.terminate()
        for service in self.services:
            service.program.end()

    @contextlib.contextmanager
    def loaded(self):
        """Documents come as fast as they can be made."""
        posters = [Poster(service, [f"pools/{POOL}"], RECEIPT_SECONDS / len(share), AHEAD * len(share), SALE)
                   for service, share in zip(self.services, self.shares)]
        for poster in posters:
            poster.start()
        try:
            yield posters
        finally:
            for poster in posters:
                poster.stop()

    def made(self, since="-infinity"):
        """When documents were begun and ended, by register."""
        found = {one.name: [] for one in self.registers}
        for one in self.database.ask(
                "SELECT register, extract(epoch FROM attempts.begun) AS begun, extract(epoch FROM ended) AS ended "
                f"FROM frspf.attempts JOIN frspf.documents USING (accepted, id) WHERE ended > '{since}' AND kind = 'sell' "
                "ORDER BY register, attempts.begun"):
            found[one["register"]].append((one["begun"], one["ended"]))
        return found

    def fill(self, count):
        """So many documents wait: copies of one that was posted where no register can be reached. Before the rack starts."""
        own = self._folder / "first"
        own.mkdir()
        alone = [Measured(1, free_port())]
        service = Service(self._programs / "frserver", self._plugin, own, alone, self.database.url, settings(alone))
        service.program.start()
        self._until(lambda: service.ask("POST", f"/v1/pools/{POOL}/documents", {**SALE, "id": "waiting:0"}, Prefer="wait=0"))
        service.program.end()
        fill(self.database, count)

    def measure(self, seconds, is_judging_claims=False):
        """What it makes once each register is at its second document."""
        with self.loaded() as posters:
            self._until(lambda: all(len(own) > 1 for own in self.made().values()))
            claims = Claims(self.database) if is_judging_claims else None
            costs = Costs(self.database, self.services)
            asked = time.monotonic()
            since = self.database.ask("SELECT now()::text AS now")[0]["now"]
            time.sleep(seconds)
            spent = costs.taken()
            claimed = claims.taken() if claims else []
            made = self.made(since)
            return {**self._figures(made, spent, seconds),
                    "post_p99": percentile([took for one in posters for took in one.times_since(asked)], 0.99),
                    "claims": claimed, "memory": costs.memory(), "connections": costs.connections(), "dearest": costs.dearest()}

    def _figures(self, made, spent, seconds):
        count = sum(len(own) for own in made.values())
        # Each register's own pace: how many ends fall into the time is a matter of chance.
        rate = sum((len(own) - 1) / (own[-1][1] - own[0][1]) for own in made.values() if len(own) > 1)
        pauses = [(after[0] - before[1]) * 1000 for own in made.values() for before, after in zip(own, own[1:])]
        each = {name: value / count for name, value in spent.items() if name != "busy"}
        return {"rate": rate, "share": rate * RECEIPT_SECONDS / len(self.registers), "count": count, "seconds": seconds,
                "pause": percentile(pauses, 0.5), "pause_p99": percentile(pauses, 0.99), "each": each, "busy": spent["busy"]}


@contextlib.contextmanager
def rack_of(database, programs, plugin, registers, processes):
    with tempfile.TemporaryDirectory(dir=programs.parent) as folder:
        rack = Rack(database, programs, Path(folder), plugin, registers, processes)
        try:
            yield rack
        finally:
            rack.stop()
