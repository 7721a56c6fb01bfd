"""PostgreSQL of a test or a measurement: in a folder of its own, without a port, gone when it is closed."""

import contextlib
import glob
import json
import os
import pwd
import shutil
import signal
import subprocess
import tempfile
import time

PATIENCE = 60


class Database:
    def __init__(self, *settings):
        """Settings are those of postgresql.conf, as NAME=VALUE."""
        self.folder = tempfile.mkdtemp()
        self.programs = sorted(glob.glob("/usr/lib/postgresql/*/bin"))[-1]
        self.settings = settings
        # It refuses to run as root.
        self.user = {}
        if os.geteuid() == 0:
            entry = pwd.getpwnam("postgres")
            os.chown(self.folder, entry.pw_uid, entry.pw_gid)
            self.user = {"user": entry.pw_uid, "group": entry.pw_gid, "extra_groups": []}
        with open(f"{self.folder}/log", "ab") as log:
            made = self.run("initdb", "-D", f"{self.folder}/data", "-U", "postgres", "-A", "trust", "-E", "UTF8",
                            "--locale=C.UTF-8", "--no-sync", said=log)
        if made.wait(PATIENCE) != 0:
            with open(f"{self.folder}/log", encoding="utf-8") as log:
                raise RuntimeError(f"initdb failed: {log.read()[-1000:]}")
        self.start()
        self.wait()

    def run(self, program, *arguments, said=subprocess.DEVNULL):
        # Not even a killed test leaves it behind.
        return subprocess.Popen(["setpriv", "--pdeathsig", "KILL", f"{self.programs}/{program}", *arguments], cwd=self.folder,
                                stdin=subprocess.DEVNULL, stdout=said, stderr=said, **self.user)

    def start(self):
        with open(f"{self.folder}/log", "ab") as log:
            self.server = self.run("postgres", "-D", f"{self.folder}/data", "-k", self.folder, "-c", "listen_addresses=",
                                   *(word for one in self.settings for word in ("-c", one)), said=log)

    def revive(self):
        """What was killed leaves behind processes of its own, beside which none starts at once."""
        end = time.monotonic() + PATIENCE
        while self.run("pg_isready", "-q", "-h", self.folder).wait(PATIENCE) != 0 and time.monotonic() < end:
            if self.server.poll() is not None:
                self.start()
            time.sleep(0.5)

    def wait(self):
        """Until it answers."""
        end = time.monotonic() + PATIENCE
        while self.run("pg_isready", "-q", "-h", self.folder).wait(PATIENCE) != 0:
            if time.monotonic() > end:
                raise RuntimeError("PostgreSQL does not start")
            time.sleep(0.05)

    def stop(self, how=signal.SIGQUIT):
        """At once, as a power cut."""
        self.server.send_signal(how)
        try:
            self.server.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.server.kill()
            self.server.wait(PATIENCE)

    @contextlib.contextmanager
    def standing_still(self):
        """It takes what it is asked, and answers nothing."""
        for process in (self.server.pid, *self.children()):
            os.kill(process, signal.SIGSTOP)
        try:
            yield
        finally:
            for process in (*self.children(), self.server.pid):
                os.kill(process, signal.SIGCONT)

    def children(self):
        task = f"/proc/{self.server.pid}/task/{self.server.pid}/children"
        with open(task, encoding="ascii") as children:
            return [int(child) for child in children.read().split()]

    def close(self):
        self.stop()
        shutil.rmtree(self.folder)

    @property
    def url(self):
        return f"postgresql://postgres:secret@/postgres?host={self.folder}"

    def execute(self, statements):
        """Statements without an answer, as the owner of all."""
        subprocess.run([f"{self.programs}/psql", "-XAtq", "-v", "ON_ERROR_STOP=1", "-h", self.folder, "-U", "postgres"],
                       input="SET client_min_messages = warning;\n" + statements, check=True, text=True, stdout=subprocess.PIPE)

    def ask(self, question):
        """The rows of a question, as objects."""
        told = subprocess.run(
            [f"{self.programs}/psql", "-XAtq", "-h", self.folder, "-U", "postgres", "-c",
             f"SELECT coalesce(json_agg(one), '[]') FROM ({question}) AS one"],
            check=True, text=True, stdout=subprocess.PIPE, stdin=subprocess.DEVNULL)
        return json.loads(told.stdout)
