#!/usr/bin/python3
"""A till's tests against the software register, to copy from: standard library alone.

Each test starts a register on ports of its own, has it misbehave, sells, and asks it what it thought. frctl stands here for
the till that is tested. The programs are taken from PATH, or from SPF_EMULATOR and FRCTL; with an uninstalled frctl,
FRCTL_PLUGIN is the folder of its plugin."""

import json
import os
import re
import subprocess
import tempfile
import threading
import unittest
import urllib.parse
import urllib.request
from pathlib import Path

RECEIPT = Path(__file__).resolve().parents[1] / "sale.json"
TOTAL = "305.23"


class Register:
    """spf-emulator with its control interface. What the routes are tells docs/emulator.openapi.json."""

    def __init__(self, *options):
        command = [os.environ.get("SPF_EMULATOR", "spf-emulator"), "--tcp", "0", "--panel", "0", "--quiet", *options]
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.line = self.read_address("ready on")
        self.url = self.read_address("panel on")
        # It goes on talking, and a pipe that nobody reads would hold it up once it is full.
        self.reader = threading.Thread(target=self.process.stderr.read, daemon=True)
        self.reader.start()

    def read_address(self, words):
        for line in self.process.stderr:
            if match := re.search(words + r" (\S+)", line):
                return match[1]
        raise RuntimeError("the register did not start")

    def stop(self):
        self.process.terminate()
        self.process.wait()
        self.reader.join()
        self.process.stderr.close()

    def ask(self, method, path, body=None, **query):
        url = f"{self.url}v1{path}?{urllib.parse.urlencode(query)}"
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(url, data, {"Content-Type": "application/json"}, method=method)
        with urllib.request.urlopen(request, timeout=30) as answer:
            text = answer.read()
        return json.loads(text) if text else None

    def wait(self, after, **what):
        """The first such event after that one; None when none comes in time. It may have come already."""
        return self.ask("GET", "/wait", after=after, timeout=10, **what)


class TillTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.journal = Path(folder.name, "journal.sqlite")
        self.register = Register()
        self.addCleanup(self.register.stop)
        self.assertEqual(0, self.till("open-shift")[0])
        self.begin = self.register.ask("GET", "/state")["lastEvent"]

    def till(self, *arguments):
        """Put your till here. Gives the exit status and what it said."""
        plugin = ["--plugin", os.environ["FRCTL_PLUGIN"]] if "FRCTL_PLUGIN" in os.environ else []
        done = subprocess.run(
            [os.environ.get("FRCTL", "frctl"), *plugin, "--port", self.register.line, "--protocol", "HEX",
             "--exclusive", "yes", "--journal", str(self.journal), "--cashier", "Иванова А. П.", *arguments],
            capture_output=True, text=True, check=False, timeout=60)
        return done.returncode, done.stdout + done.stderr

    def receipts(self):
        documents = self.register.ask("GET", "/documents")["documents"]
        return [document["total"] for document in documents if document["word"] == "sell"]

    def test_sale(self):
        status, text = self.till("sell", str(RECEIPT))
        self.assertEqual(0, status, text)
        event = self.register.wait(self.begin, event="document", type="sell")
        self.assertEqual(TOTAL, event["data"]["total"])
        number = event["data"]["number"]
        tags = {tag["tag"]: tag["value"] for tag in self.register.ask("GET", f"/documents/{number}")["tags"]}
        self.assertEqual("Иванова А. П.", tags[1021])

    def test_without_paper_the_same_sale_is_made_later(self):
        self.register.ask("PUT", "/paper", {"state": "out"})
        status, text = self.till("--id", "till-1:1", "sell", str(RECEIPT))
        self.assertNotEqual(0, status)
        self.assertIn("Конец бумаги", text)
        self.assertEqual("8", self.register.wait(self.begin, event="refusal")["data"]["error"])
        self.register.ask("PUT", "/paper", {"state": "in"})
        status, text = self.till("--id", "till-1:1", "sell", str(RECEIPT))
        self.assertEqual(0, status, text)
        self.assertEqual([TOTAL], self.receipts())

    def test_lost_answer_sells_once(self):
        rule = {"mode": "lost", "command": "FinishDocument", "nth": 1}
        self.register.ask("PUT", "/faults", {"rules": [rule]})
        status, text = self.till("--id", "till-1:2", "sell", str(RECEIPT))
        self.assertIn(status, (0, 3), text)  # issued, or issued although an answer was missing
        self.assertEqual(1, self.register.ask("GET", "/faults")["rules"][0]["hits"])
        self.till("--id", "till-1:2", "sell", str(RECEIPT))
        self.assertEqual([TOTAL], self.receipts())

    def test_shift_that_is_too_long(self):
        self.register.ask("POST", "/clock/jump", {"seconds": 25 * 3600})
        self.assertTrue(self.register.ask("GET", "/state")["shift"]["tooLong"])
        self.assertNotEqual(0, self.till("sell", str(RECEIPT))[0])
        self.assertEqual(0, self.till("z-report")[0])
        self.assertEqual([], self.receipts())


if __name__ == "__main__":
    unittest.main()
