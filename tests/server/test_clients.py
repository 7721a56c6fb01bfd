#!/usr/bin/python3
"""The examples of clients at the service."""

import json
import os
import signal
import subprocess
import unittest

from service import ROOT
from servicetest import SALE, TOTAL, Listener, ServiceTest

EXAMPLES = ROOT / "examples"


class Clients(ServiceTest):
    """The examples to copy from."""

    CLIENTS = ("sell.py", "sell.sh", "sell.mjs")

    def sell(self, client, document_id, body, url=None):
        file = self.folder / "body.json"
        file.write_text(json.dumps(body), encoding="utf-8")
        return subprocess.run([EXAMPLES / "clients" / client, url or self.service.url, "till1", document_id, file],
                              capture_output=True, text=True, check=False, timeout=60)

    def test_sell_once_and_tell_the_truth(self):
        for number, client in enumerate(self.CLIENTS, 1):
            with self.subTest(client):
                for _ in range(2):
                    done = self.sell(client, f"client:{number:04}", SALE)
                    self.assertEqual(0, done.returncode, done)
                    self.assertEqual("issued", json.loads(done.stdout)["state"])
                self.assertEqual([TOTAL] * number, self.register.receipts())
                poor = self.sell(client, f"cash:{number:05}", {"type": "cashOut", "sum": 99999})
                self.assertEqual(1, poor.returncode, poor)
                self.assertIn("cash", poor.stdout + poor.stderr)
                wrong = self.sell(client, f"wrong:{number:04}", {**SALE, "items": []})
                self.assertEqual(1, wrong.returncode, wrong)
                self.assertIn("items", wrong.stdout + wrong.stderr)

    def test_take_no_news_from_a_proxy(self):
        class Proxy(Listener):
            """Says something of its own at first."""

            def do_POST(self):  # pylint: disable=invalid-name
                body = self.body()
                status, kind, said = self.server.own.pop(0) if self.server.own else (0, None, b"")
                if status == 0:
                    answer = self.server.service.ask("POST", self.path, json.loads(body),
                                                     Idempotency_Key=self.headers["Idempotency-Key"], Prefer="wait=30")
                    text = json.dumps(answer.body, separators=(",", ":"))
                    status, kind, said = answer.status, "application/json", text.encode()
                self.send_response(status)
                self.send_header("Content-Type", kind)
                self.end_headers()
                self.wfile.write(said)

        proxy = self.listen(Proxy)
        proxy.service = self.service
        for number, client in enumerate(self.CLIENTS, 1):
            with self.subTest(client):
                is_page = client == "sell.sh"
                proxy.own = [(200, "text/html", b"Log in") if is_page else (200, "application/json", b"[]")]
                done = self.sell(client, f"proxy:{number:04}", SALE, f"http://127.0.0.1:{proxy.server_port}")
                self.assertEqual(0, done.returncode, done)
                self.assertEqual("issued", json.loads(done.stdout)["state"])
                self.assertEqual([TOTAL] * number, self.register.receipts())

    def test_call_a_person_when_nobody_knows(self):
        """A register that others may work, too, and that loses a sale's last answer."""
        self.service.stop()
        self.service.edit("exclusive = yes", "exclusive = no")
        self.service.start()
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        self.begin_printing("lost:0001", each=1)
        for worker in self.service.workers():
            os.kill(worker, signal.SIGKILL)
        for client in self.CLIENTS:
            with self.subTest(client):
                done = self.sell(client, "lost:0001", SALE)
                self.assertEqual(3, done.returncode, done)
        done = subprocess.run([os.environ["FRCTL"], "--port", f"service:{self.service.url.rstrip('/')}/till1", "--id", "lost:0001",
                               "sell", EXAMPLES / "sale.json"], capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual((5, True), (done.returncode, "state: unknown" in done.stdout), done)
        self.assertEqual([TOTAL], self.register.receipts())
        number = self.register.ask("GET", "/state")["drive"]["documents"]
        resolved = self.service.ask("POST", "/v1/documents/lost:0001/resolve", {"state": "issued", "documentNumber": number})
        self.assertEqual(200, resolved.status, resolved)
        self.assert_issued(self.service.post(SALE, id="lost:0001"), 200)


if __name__ == "__main__":
    unittest.main()
