"""Services of several machines, and the database that they share."""

import glob
import os
import pwd
import shutil
import signal
import subprocess
import tempfile
import unittest
from pathlib import Path

from service import PATIENCE, Register, Service


class Database:
    """PostgreSQL in a folder of its own, without a port."""

    def __init__(self):
        self.folder = tempfile.mkdtemp()
        self.programs = sorted(glob.glob("/usr/lib/postgresql/*/bin"))[-1]
        # It refuses to run as root.
        self.user = {}
        if os.geteuid() == 0:
            entry = pwd.getpwnam("postgres")
            os.chown(self.folder, entry.pw_uid, entry.pw_gid)
            self.user = {"user": entry.pw_uid, "group": entry.pw_gid, "extra_groups": []}
        self.run("initdb", "-D", f"{self.folder}/data", "-U", "postgres", "-A", "trust", "-E", "UTF8", "--locale=C.UTF-8",
                 "--no-sync").wait(PATIENCE)
        self.start()

    def run(self, program, *arguments):
        return subprocess.Popen([f"{self.programs}/{program}", *arguments], cwd=self.folder, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL, **self.user)

    def start(self):
        self.server = self.run("postgres", "-D", f"{self.folder}/data", "-k", self.folder, "-c", "listen_addresses=")

    def stop(self):
        """At once, as a power cut."""
        self.server.send_signal(signal.SIGQUIT)
        self.server.wait(PATIENCE)

    def close(self):
        self.stop()
        shutil.rmtree(self.folder)

    @property
    def url(self):
        return f"postgresql://postgres:secret@/postgres?host={self.folder}"


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
