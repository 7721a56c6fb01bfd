"""What tests of the service stand on: one register, one service, a folder."""

import http.server
import signal
import tempfile
import threading
import unittest
from pathlib import Path

from service import Register, Service, receipt

SALE = receipt()
TOTAL = "305.23"


class Listener(http.server.BaseHTTPRequestHandler):
    """Another program that is told something."""

    def body(self):
        return self.rfile.read(int(self.headers["Content-Length"]))

    def log_message(self, *_):  # pylint: disable=arguments-differ
        pass


class ServiceTest(unittest.TestCase):
    """One register, one service, a folder."""

    PROTOCOL = "HEX"

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.journal = self.folder / "journal.sqlite"
        self.prepare()
        self.register = Register()
        self.addCleanup(self.register.stop)
        self.service = Service(self.folder, {"till1": self.register.line}, self.PROTOCOL)
        self.addCleanup(lambda: self.service.stop())  # pylint: disable=unnecessary-lambda

    def prepare(self):
        """What a test does to the folder before anything is in it."""

    def listen(self, listener):
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), listener)
        threading.Thread(target=server.serve_forever).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return server

    def assert_issued(self, answer, status=201):
        self.assertEqual((status, "issued"), (answer.status, answer["state"]), answer)

    def restart(self, how=signal.SIGKILL):
        self.service.stop(how)
        self.service.start()

    def until(self, waiting):
        """The register waits for that, or for nothing."""
        with self.service.client.events() as events:
            if self.service.ask("GET", "/v1/registers/till1")["waiting"] != waiting:
                events.until("register", register="till1", waiting=waiting)

    def begin_printing(self, *documents, **which):
        """The register is at the end of the first receipt, and keeps what became of it to itself for a moment."""
        with self.register.meets(**which):
            for document in documents:
                self.assertEqual(202, self.service.post(SALE, id=document, wait=0).status)

    def put_back(self, copy):
        """The journal is what it was when it was copied; no service is at work."""
        copy.replace(self.journal)
        for rest in ("-wal", "-shm"):
            Path(f"{self.journal}{rest}").unlink(missing_ok=True)
