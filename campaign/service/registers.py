"""Software registers that keep their state, each with a line of its own."""

import json
import subprocess
import time
import urllib.error
import urllib.request
from decimal import Decimal

from lines import PtyLine, TcpLine
from programs import Program, free_port

READY = 30


class Register:
    """till1, till2 ...: HEX and XML in turn, two over TCP and two on pseudo terminals in turn where no line is given."""

    def __init__(self, emulator, folder, place, make_line=None, options=(), is_exclusive=True):
        self.name = f"till{place + 1}"
        self.protocol = "HEX" if place % 2 == 0 else "XML"
        self.serial = f"001030000000123456{place + 10}"
        self.folder = folder / self.name
        self.folder.mkdir()
        self.emulator = emulator
        self.tcp, self.panel = free_port(), free_port()
        self.program = Program(
            [emulator, "--tcp", self.tcp, "--panel", self.panel, "--quiet", "--state", self.folder / "state",
             "--serial", self.serial, *options], self.folder / "log")
        make_line = make_line or (TcpLine if place % 4 < 2 else PtyLine)
        self.line = make_line(self.tcp, self.folder)
        self.is_exclusive = is_exclusive

    @property
    def section(self):
        """Of the service's configuration."""
        return (f"[register {self.name}]\nport = {self.line.port}\nprotocol = {self.protocol}\nserial = {self.serial}\n"
                f"exclusive = {'yes' if self.is_exclusive else 'no'}\ncashier = Иванова А. П.\nallow-test-drive = yes\n")

    def start(self):
        self.program.start()

    def wait(self):
        end = time.monotonic() + READY
        while time.monotonic() < end:
            try:
                return self.ask("GET", "/state")
            except (OSError, urllib.error.URLError):
                time.sleep(0.05)
        raise RuntimeError(f"{self.name}: the register does not start: {(self.folder / 'log').read_text()[-500:]}")

    def ask(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(f"http://127.0.0.1:{self.panel}/v1{path}", data,
                                         {"Content-Type": "application/json"}, method=method)
        with urllib.request.urlopen(request, timeout=10) as answer:
            text = answer.read()
        return json.loads(text) if text else None

    def documents(self):
        """What the fiscal drive has, read from the state that was kept."""
        told = subprocess.run([self.emulator, "documents", "--state", self.folder / "state", "--json"],
                              capture_output=True, check=True, timeout=READY)
        return json.loads(told.stdout)

    def drawer(self):
        return int(Decimal(self.wait()["drawer"]["cash"]) * 100)

    def stop(self):
        self.line.end()
        self.program.end()


def kopecks(text):
    return int(Decimal(text) * 100)
