"""Services of several machines over one database."""

import os
import shutil
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

from database import Database
from service import PATIENCE, Register, Service


class SharedStoreTest(unittest.TestCase):
    def setUp(self):
        self.database = Database()
        self.addCleanup(self.database.close)
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.registers = {}
        self.services = {}

    def serve(self, name):
        register = self.registers[name] = Register()
        self.addCleanup(register.stop)
        return self.serve_registers(name, {name: register.line})

    def serve_registers(self, name, lines):
        folder = self.folder / name
        folder.mkdir()
        service = self.services[name] = Service.__new__(Service)
        service.configure(folder, lines)
        service.edit(f"journal = {folder}/journal.sqlite\n", "")
        service.edit("[service]", f"[store]\nurl = {self.database.url}\n\n[service]")
        return service

    def start(self, service, **options):
        service.start(**options)
        # What starts it in its stead keeps a good-bye to itself.
        self.addCleanup(service.stop, signal.SIGKILL if service.through else signal.SIGTERM)

    def frctl(self, *arguments):
        return subprocess.run([os.environ["FRCTL"], "--json", *arguments], capture_output=True, text=True, check=False,
                              timeout=PATIENCE, env={**os.environ, "FRSPF_JOURNAL": self.database.url})
