#!/usr/bin/python3
"""The service as its clients have it: sales over HTTP on a software register, and what goes wrong with them."""

import base64
import hashlib
import hmac
import http.server
import json
import os
import queue
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
# pylint: disable=wrong-import-position
from service import ROOT, Register, Service, frctl, receipt  # noqa: E402

EXAMPLES = ROOT / "examples"
SALE = receipt()
TOTAL = "305.23"


class ServiceTest(unittest.TestCase):
    """One register, one service, a folder."""

    PROTOCOL = "HEX"

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.prepare()
        self.register = Register()
        self.addCleanup(self.register.stop)
        self.service = Service(self.folder, {"till1": self.register.line}, self.PROTOCOL)
        self.addCleanup(lambda: self.service.stop())  # pylint: disable=unnecessary-lambda

    def prepare(self):
        """What a test does to the folder before anything is in it."""

    def assert_issued(self, answer, status=201):
        self.assertEqual((status, "issued"), (answer.status, answer["state"]), answer)

    def restart(self, how=signal.SIGKILL):
        self.service.stop(how)
        self.service.start()


class Sales(ServiceTest):
    def test_a_sale_is_issued_once(self):
        answer = self.service.post(SALE, id="sale:0001")
        self.assert_issued(answer)
        self.assertEqual("/v1/documents/sale:0001", answer.headers["Location"])
        self.assertEqual(305.23, answer["total"])
        self.assertIn("Хлеб Бородинский", self.register.tape())
        again = self.service.post(SALE, id="sale:0001")
        self.assert_issued(again, 200)
        self.assertTrue(again["replayed"])
        self.assertEqual(answer["documentNumber"], again["documentNumber"])
        other = self.service.post({**SALE, "payments": [{"type": "cash", "sum": 600}]}, id="sale:0001")
        self.assertEqual(422, other.status)
        self.assertEqual(self.service.ask("GET", "/v1/documents/sale:0001")["digest"], other["digest"])
        self.assertEqual([TOTAL], self.register.receipts())

    def test_two_at_once_are_one_document(self):
        answers = []
        clients = [threading.Thread(target=lambda: answers.append(self.service.post(SALE, id="sale:0002"))) for _ in range(8)]
        for client in clients:
            client.start()
        for client in clients:
            client.join()
        self.assertEqual({"issued"}, {answer["state"] for answer in answers}, answers)
        self.assertEqual([TOTAL], self.register.receipts())

    def test_a_day(self):
        """Every kind of document, in an order that a shop has."""
        day = [
            {"type": "openShift"}, {"type": "cashIn", "sum": 1000}, SALE, receipt("return"), {"type": "xReport"},
            {"type": "text", "lines": ["Спасибо", "", "за покупку"]}, {"type": "copy"},
            {"type": "cashOut", "sum": 500}, {"type": "zReport"}]
        # Over HEX with a closed shift, over XML with an open one.
        day.insert(-1 if self.PROTOCOL == "XML" else len(day), {"type": "accountingReport"})
        for place, body in enumerate(day):
            answer = self.service.post(body, id=f"day:{place:06}")
            self.assert_issued(answer)
        self.assertIn("за покупку", self.register.tape())
        # A shift that is closed is none that could be closed again.
        closed = self.service.post({"type": "zReport"}, id="day:again")
        self.assertEqual((409, "notIssued", "refused"), (closed.status, closed["state"], closed["reason"]), closed)
        metrics = self.service.ask("GET", "/metrics").body
        self.assertIn('frserver_documents_total{register="till1",state="issued",reason=""} 10\n', metrics)
        for name in ("exchanges", "exchange_seconds", "connections"):
            self.assertRegex(metrics, f'frserver_{name}_total{{register="till1"}} (0\\.0*)?[1-9]')
        listed = self.service.ask("GET", "/v1/documents?limit=4")
        self.assertEqual(["day:again", "day:000009", "day:000008", "day:000007"], [one["id"] for one in listed["documents"]])
        rest = self.service.ask("GET", f"/v1/documents?cursor={listed['next']}")
        self.assertEqual((7, None), (len(rest["documents"]), rest["next"]))

    def test_pictures(self):
        self.assert_issued(self.service.post(SALE, id="sale:0003"))
        for accept, beginning in (("image/svg+xml", b"<svg"), ("image/png", b"\x89PNG")):
            for method, path, body in (("GET", "/v1/documents/sale:0003/picture", None), ("POST", "/v1/preview", SALE),
                                       ("POST", "/v1/preview?register=till1", receipt("return"))):
                status, kind, picture = self.service.bytes(method, path, body, accept)
                self.assertEqual((200, accept), (status, kind), picture)
                self.assertTrue(picture.startswith(beginning), picture[:80])
                if beginning == b"<svg":
                    self.assertIn("Хлеб Бородинский", picture.decode())
        # What its rules allow, and a register does not.
        refused = {**SALE, "payments": [{"type": "cash", "sum": 300}]}
        status, kind, problem = self.service.bytes("POST", "/v1/preview", refused, "image/png")
        self.assertEqual((400, "application/problem+json"), (status, kind), problem)
        self.assertTrue(json.loads(problem)["errors"])

    def test_what_is_wrong_is_told_and_not_stored(self):
        wrong = self.service.post({**SALE, "items": [{"name": "Хлеб", "price": -1}]}, id="sale:0003")
        self.assertEqual(400, wrong.status)
        self.assertIn("items[0].price", [error["path"] for error in wrong["errors"]])
        self.assertEqual(404, self.service.ask("GET", "/v1/documents/sale:0003").status)
        self.assertEqual(400, self.service.ask("POST", "/v1/registers/till1/documents", SALE).status)
        self.assert_issued(self.service.post(SALE, id="sale:0003"))

    def test_the_register_refuses(self):
        refused = self.service.post({"type": "cashOut", "sum": 5000}, id="cash:0001")
        self.assertEqual((409, "notIssued", "refused"), (refused.status, refused["state"], refused["reason"]), refused)
        self.assertEqual("cash", refused["error"]["kind"])
        self.assert_issued(self.service.post({"type": "cashIn", "sum": 50}, id="cash:0001"))

    def test_a_register_that_restarts_between_documents(self):
        early = self.service.post({"type": "xReport"}, id="till1:early")
        self.assertEqual((409, "shiftClosed"), (early.status, early["error"]["kind"]), early)
        self.assert_issued(self.service.post(SALE, id="till1:0001"))
        for place, body in enumerate(({"type": "xReport"}, {"type": "copy", "documentNumber": 1}, {"type": "copy"})):
            for state in ("off", "on"):
                self.register.ask("PUT", "/power", {"state": state})
            self.assert_issued(self.service.post(body, id=f"till1:paper{place}"))


class SalesOverXml(Sales):
    PROTOCOL = "XML"


class Waiting(ServiceTest):
    def setUp(self):
        super().setUp()
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        self.events = self.service.client.events()
        self.addCleanup(self.events.__exit__)

    def take_paper_out(self):
        self.register.ask("PUT", "/paper", {"state": "out"})
        answer = self.service.post(SALE, id="sale:0001", wait=0)
        self.assertEqual((202, "queued"), (answer.status, answer["state"]), answer)
        self.events.until("register", register="till1", waiting="paper")

    def test_paper(self):
        self.take_paper_out()
        self.assertEqual("paper", self.service.ask("GET", "/v1/registers/till1")["waiting"])
        self.assertEqual("paper", self.service.ask("GET", "/v1/documents/sale:0001")["waiting"])
        self.register.ask("PUT", "/paper", {"state": "in"})
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.assertEqual([TOTAL], self.register.receipts())

    def test_withdrawn(self):
        self.take_paper_out()
        self.assertEqual("deleted", self.service.ask("DELETE", "/v1/documents/sale:0001")["reason"])
        self.register.ask("PUT", "/paper", {"state": "in"})
        self.assert_issued(self.service.post({"type": "cashIn", "sum": 1}, id="cash:0001"))
        self.assertEqual([], self.register.receipts())
        late = self.service.ask("DELETE", "/v1/documents/cash:0001")
        self.assertEqual((409, "issued"), (late.status, late["state"]))

    def test_too_late_for_a_customer_who_has_gone(self):
        self.take_paper_out()
        expired = self.service.post({"type": "cashIn", "sum": 1}, id="cash:0001", startBefore=0.2)
        self.assertEqual((409, "notIssued", "expired"), (expired.status, expired["state"], expired["reason"]), expired)
        self.register.ask("PUT", "/paper", {"state": "in"})
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.assertNotIn("ВНЕСЕНИЕ", self.register.tape())

    def test_pause_leaves_the_line_to_others(self):
        busy = frctl(self.service, self.register.line, "status")
        self.assertNotEqual(0, busy.returncode)
        paused = self.service.ask("POST", "/v1/registers/till1/pause", {"by": "Петров"})
        self.assertEqual((200, "paused"), (paused.status, paused["state"]), paused)
        done = frctl(self.service, self.register.line, "cash-in", "10")
        self.assertEqual(0, done.returncode, done.stderr)
        queued = self.service.post(SALE, id="sale:0001", wait=0)
        self.assertEqual(202, queued.status)
        self.service.ask("POST", "/v1/registers/till1/resume")
        self.assert_issued(self.service.post(SALE, id="sale:0001"))

    def test_without_its_line(self):
        self.register.stop()
        answer = self.service.post(SALE, id="sale:0001", wait=0)
        self.assertEqual(202, answer.status)
        self.events.until("register", register="till1", waiting="line")


class Killed(ServiceTest):
    def kill_in_the_middle(self, kill):
        """While the register keeps the sale's end to itself, which one is for it to say."""
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        self.register.ask("PUT", "/faults", {"rules": [{"mode": "busy:3", "command": "FinishDocument", "nth": 1}]})
        begin = self.register.ask("GET", "/state")["lastEvent"]
        self.assertEqual(202, self.service.post(SALE, id="sale:0001", wait=0).status)
        self.register.ask("GET", f"/wait?event=exchange&command=FinishDocument&timeout=60&after={begin}")
        kill()

    def assert_truth(self):
        answer = self.service.post(SALE, id="sale:0001")
        self.assertIn(answer.status, (200, 201), answer)
        self.assertEqual([TOTAL], self.register.receipts())
        again = self.service.post(SALE, id="sale:0001")
        self.assert_issued(again, 200)
        self.assertEqual([TOTAL], self.register.receipts())

    def test_service(self):
        self.kill_in_the_middle(lambda: self.restart(signal.SIGKILL))
        self.assert_truth()

    def test_worker(self):
        def kill():
            for worker in self.service.workers():
                os.kill(worker, signal.SIGKILL)

        self.kill_in_the_middle(kill)
        self.assert_truth()

    def test_what_waits_outlives_the_service(self):
        self.service.ask("POST", "/v1/registers/till1/pause")
        self.assertEqual(202, self.service.post(SALE, id="sale:0001", wait=0).status)
        self.restart(signal.SIGKILL)
        self.service.ask("POST", "/v1/registers/till1/resume")
        self.assert_truth()

    def test_workers_end_with_the_service(self):
        workers = self.service.workers()
        self.assertTrue(workers)
        self.service.stop(signal.SIGKILL)
        for worker in workers:
            # Its end is that of its last descriptor: the register's line is free.
            done = frctl(self.service, self.register.line, "--wait", "30", "status")
            self.assertEqual(0, done.returncode, done.stderr)
            self.assertFalse(Path(f"/proc/{worker}/exe").exists() and b"--worker" in Path(f"/proc/{worker}/cmdline").read_bytes())
        self.service.start()


class Taker(http.server.BaseHTTPRequestHandler):
    """A program that a webhook tells; it fails at first."""

    def do_POST(self):  # pylint: disable=invalid-name
        body = self.rfile.read(int(self.headers["Content-Length"]))
        self.server.told.put((dict(self.headers), body))
        self.send_response(self.server.statuses.pop(0) if self.server.statuses else 204)
        self.end_headers()

    def log_message(self, *_):  # pylint: disable=arguments-differ
        pass


class Clients(ServiceTest):
    """The examples to copy from."""

    CLIENTS = ("sell.py", "sell.sh", "sell.mjs")

    def sell(self, client, document_id, body):
        file = self.folder / "body.json"
        file.write_text(json.dumps(body), encoding="utf-8")
        return subprocess.run([EXAMPLES / "clients" / client, self.service.url, "till1", document_id, file],
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

    def test_call_a_person_when_nobody_knows(self):
        """A register that others may work, too, and that loses a sale's last answer."""
        self.service.stop()
        text = self.service.config.read_text(encoding="utf-8")
        self.service.config.write_text(text.replace("exclusive = yes", "exclusive = no"), encoding="utf-8")
        self.service.start()
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        self.register.ask("PUT", "/faults", {"rules": [{"mode": "busy:3", "command": "FinishDocument", "each": 1}]})
        begin = self.register.ask("GET", "/state")["lastEvent"]
        self.service.post(SALE, id="lost:0001", wait=0)
        self.register.ask("GET", f"/wait?event=exchange&command=FinishDocument&timeout=60&after={begin}")
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


class Program(ServiceTest):
    def test_tells_a_webhook(self):
        taker = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Taker)
        taker.told, taker.statuses = queue.Queue(), [500]
        threading.Thread(target=taker.serve_forever).start()
        self.addCleanup(taker.server_close)
        self.addCleanup(taker.shutdown)
        self.service.stop()
        with open(self.service.config, "a", encoding="utf-8") as config:
            config.write(f"[webhook]\nurl = http://127.0.0.1:{taker.server_port}/ends\nsecret = a secret of ours\n")
        self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        # The shift that it opened is a document, too; what was not taken comes again, and holds no other up.
        told = [taker.told.get(timeout=60) for _ in range(3)]
        self.assertEqual(["openShift", "sell", "openShift"], [json.loads(body)["kind"] for _, body in told])
        self.assertEqual(told[0][1], told[2][1])
        self.assertEqual(told[0][0]["webhook-id"], told[2][0]["webhook-id"])
        headers, body = told[1]
        self.assertEqual(("sale:0001", "issued"), (json.loads(body)["id"], json.loads(body)["state"]))
        signed = b".".join([headers["webhook-id"].encode(), headers["webhook-timestamp"].encode(), body])
        signature = base64.b64encode(hmac.new(b"a secret of ours", signed, hashlib.sha256).digest()).decode()
        self.assertEqual("v1," + signature, headers["webhook-signature"])

    def test_ends_by_itself(self):
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.assertEqual(0, self.service.stop(signal.SIGTERM))
        self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"), 200)
        self.assertEqual(0, self.service.stop(signal.SIGINT))
        self.service.start()

    def test_tells_systemd(self):
        self.service.stop()
        with socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM) as notices:
            notices.bind(str(self.folder / "notify"))
            notices.settimeout(60)
            self.service.start(environment={"NOTIFY_SOCKET": str(self.folder / "notify"), "WATCHDOG_USEC": "200000"})
            self.assertIn(b"READY=1", notices.recv(4096).split(b"\n"))
            self.assertEqual(b"WATCHDOG=1", notices.recv(4096))
            self.service.stop()
            while (notice := notices.recv(4096)) != b"STOPPING=1":
                self.assertEqual(b"WATCHDOG=1", notice)
        self.service.start()

    def test_keeps_foreign_pages_out(self):
        foreign = self.service.ask("POST", "/v1/registers/till1/documents", {**SALE, "id": "sale:0001"},
                                   Origin="http://elsewhere.example")
        self.assertEqual(403, foreign.status)
        self.assertEqual(421, self.service.ask("GET", "/v1/registers", Host="elsewhere.example").status)
        self.assertEqual(404, self.service.ask("GET", "/v1/documents/sale:0001").status)

    def test_tokens(self):
        self.assertEqual(200, self.service.ask("GET", "/v1/registers").status)
        added = {}
        for name, role in (("shop", "sell"), ("web", "sell"), ("boss", "admin"), ("look", "read")):
            made = self.service.command("token", "add", name, "--role", role, "--registers", "till1")
            self.assertEqual(0, made.returncode, made.stderr)
            added[name] = made.stdout.strip()
        self.service.process.send_signal(signal.SIGHUP)
        self.service.read_address("tokens:")
        self.assertEqual(401, self.service.ask("GET", "/v1/registers").status)
        self.assertEqual(200, self.service.ask("GET", "/healthz").status)
        self.service.client.token = added["shop"]
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.assertEqual(403, self.service.ask("POST", "/v1/registers/till1/pause").status)
        self.service.client.token = added["look"]
        self.assertEqual(403, self.service.post(SALE, id="sale:0002").status)
        self.assertEqual(200, self.service.ask("GET", "/v1/documents/sale:0001").status)
        self.service.client.token = added["web"]
        self.assertEqual(404, self.service.ask("GET", "/v1/documents/sale:0001").status)
        self.assertEqual([], self.service.ask("GET", "/v1/documents")["documents"])
        self.service.client.token = added["boss"]
        self.assertEqual(200, self.service.ask("POST", "/v1/registers/till1/pause").status)
        self.assertNotIn(added["shop"], (self.folder / "tokens").read_text(encoding="utf-8"))
        self.assertIn("shop  sell  till1\n", self.service.command("token", "list").stdout)
        self.assertEqual(1, self.service.command("token", "remove", "nobody").returncode)

    def test_command_line(self):
        for arguments, status, part in (
                (("--version",), 0, "frserver "), (("--help",), 0, "check-config"), (("sell",), 2, "sell"),
                (("token", "add", "x"), 2, "--role"), (("check-config",), 0, "till1")):
            done = self.service.command(*arguments)
            self.assertEqual(status, done.returncode, (arguments, done))
            self.assertIn(part, done.stdout + done.stderr)
        second = self.service.command("--listen", self.service.url.split("//")[1].strip("/"))
        self.assertEqual(1, second.returncode)
        text = self.service.config.read_text(encoding="utf-8")
        for wrong, place in (("listen = 0.0.0.0:80", ":2: "), ("listen = 127.0.0.1:80\nlisten = 1", ":3: ")):
            self.service.config.write_text(text.replace("listen = 127.0.0.1:0", wrong), encoding="utf-8")
            done = self.service.command("check-config")
            self.assertEqual(2, done.returncode, done)
            self.assertIn(f"{self.service.config}{place}", done.stderr)


if __name__ == "__main__":
    unittest.main()
