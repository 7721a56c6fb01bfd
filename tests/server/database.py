"""PostgreSQL for a test."""

import glob
import os
import pwd
import shutil
import signal
import subprocess
import tempfile

from service import PATIENCE


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

    def sql(self, statement):
        status = self.run("psql", "-X", "-h", self.folder, "-U", "postgres", "-v", "ON_ERROR_STOP=1", "-c", statement)
        assert status.wait(PATIENCE) == 0, statement

    def close(self):
        self.stop()
        shutil.rmtree(self.folder)

    @property
    def url(self):
        return f"postgresql://postgres:secret@/postgres?host={self.folder}"
