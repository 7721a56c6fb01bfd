"""Services of several machines over one database."""

import functools
import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from database import Database
from service import PATIENCE, Register, Service


class SharedStoreTest(unittest.TestCase):
    DATABASE = Database

    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.registers = {}
        self.services = {}

    @functools.cached_property
    def database(self):
        """For whoever wants it."""
        database = self.DATABASE()
        self.addCleanup(database.close)
        return database

    def add_register(self, name):
        register = self.registers[name] = Register()
        self.addCleanup(register.stop)
        return register

    def serve(self, name, protocol="HEX"):
        """A service with a register of its own."""
        return self.serve_registers(name, {name: self.add_register(name).line}, protocol)

    def serve_registers(self, name, lines, protocol="HEX"):
        service = self.services[name] = self.configured(name, lines, protocol)
        service.edit(f"journal = {service.folder}/journal.sqlite\n", "")
        service.edit("[service]", f"[store]\nurl = {self.database.url}\n\n[service]")
        return service

    def configured(self, name, lines, protocol="HEX"):
        """With a journal of its own, and not started."""
        folder = self.folder / name
        folder.mkdir()
        service = Service.__new__(Service)
        service.configure(folder, lines, protocol)
        return service

    def migrate(self, service):
        done = service.command("migrate")
        self.assertEqual(0, done.returncode, done.stderr)
        return done

    def start(self, service, **options):
        service.start(**options)
        # What starts it in its stead keeps a good-bye to itself.
        self.addCleanup(service.stop, signal.SIGKILL if service.through else signal.SIGTERM)

    def becomes(self, look, wanted):
        deadline = time.monotonic() + PATIENCE
        while (told := look()) != wanted and time.monotonic() < deadline:
            # What is looked at wants the processor, too.
            time.sleep(0.02)
        self.assertEqual(wanted, told)

    def until(self, service, register, **wanted):
        """The view of the register at that service says so."""
        view = lambda: service.ask("GET", f"/v1/registers/{register}").body  # noqa: E731
        self.becomes(lambda: {member: view().get(member) for member in wanted}, wanted)

    def assert_issued(self, answer):
        self.assertEqual((201, "issued"), (answer.status, answer["state"]), answer)

    def frctl(self, *arguments):
        return subprocess.run([os.environ["FRCTL"], "--json", *arguments], capture_output=True, text=True, check=False,
                              timeout=PATIENCE, env={**os.environ, "FRSPF_JOURNAL": self.database.url})
