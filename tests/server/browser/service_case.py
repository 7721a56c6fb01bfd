"""A browser at the page of the service, whose registers are of software."""

import json
import re
import subprocess
import sys
import urllib.request
from pathlib import Path

import stage
from case import PLUGINS, SOURCES, PanelTest

FRSERVER = sys.argv[6]
SALE = json.loads(Path(SOURCES, "examples/sale.json").read_text(encoding="utf-8"))
SECTION = """
[register till{number}]
port = {line}
protocol = HEX
exclusive = yes
cashier = Иванова А. П.
allow-test-drive = true
"""
POOL = """
[pool webshop]
registers = {registers}
"""


class Service:
    """frserver with the registers of a stage.Register, in their folder."""

    def __init__(self, register, port=0):
        self.log = Path(register.folder, "service.log")
        self.config = Path(register.folder, "frserver.ini")
        sections = [SECTION.format(number=number, line="tcp:{}:{}".format(*line))
                    for number, line in enumerate(register.lines, 1)]
        pool = POOL.format(registers=", ".join(f"till{number + 1}" for number in range(len(sections))))
        self.config.write_text(f"[service]\nlisten = 127.0.0.1:{port}\njournal = {register.folder}/journal\n"
                               f"plugin = {PLUGINS}\n" + "".join(sections) + pool, encoding="utf-8")
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen([FRSERVER, "--config", self.config], stdin=subprocess.DEVNULL, stdout=log,
                                            stderr=log, cwd=register.folder)
        self.url = stage.wait_for(lambda: re.search(r"ready on (\S+)", self.log.read_text()) or self.must_run())[1]
        self.port = int(self.url.rsplit(":", 1)[1].strip("/"))

    def must_run(self):
        assert self.process.poll() is None, self.log.read_text()

    def stop(self):
        if self.process.poll() is None:
            self.process.terminate()
        self.process.wait(60)

    def command(self, *arguments):
        return subprocess.run([FRSERVER, "--config", self.config, *arguments], capture_output=True, text=True,
                              check=True, timeout=20).stdout.strip()

    def ask(self, path, body=None, method=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(f"{self.url.rstrip('/')}/v1{path}", data, {"Content-Type": "application/json"},
                                         method=method)
        with urllib.request.urlopen(request, timeout=20) as answer:
            return json.load(answer)

    def post(self, document, number, register="till1"):
        return self.ask(f"/registers/{register}/documents", {**document, "id": number})


class ServicePageTest(PanelTest):
    def setUp(self):
        super().setUp()
        self.service = Service(self.register)
        self.addCleanup(lambda: self.service.stop())  # pylint: disable=unnecessary-lambda
        self.page.get(self.service.url)

    def works(self, name="till1"):
        self.becomes(lambda: self.till(name), "works")

    def till(self, name="till1"):
        """What the page says of the register."""
        return self.text(f"[data-register={name}]")

    def row(self, number):
        return self.text(f"[data-id='{number}']")

    def fill(self, name, value):
        self.write(f"#receipt [name={name}]", value, anew=True)
