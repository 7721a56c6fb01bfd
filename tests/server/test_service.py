#!/usr/bin/python3
"""The service as its clients have it: sales over HTTP on a software register, and what goes wrong with them."""

import json
import os
import signal
import unittest

from service import at_once, frctl, receipt
from servicetest import SALE, TOTAL, ServiceTest


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

    def test_what_the_register_told_stays(self):
        """Its clock behind the document, over HEX, and what it said of marked goods: as frctl tells it, and for ever."""
        marked = self.service.post(receipt("marked-sale"), id="sale:0002")
        self.assert_issued(marked)
        self.assertRegex(str(marked["dateTime"]), r"^20\d\d-\d\d-\d\dT[\d:]{8}$" if self.PROTOCOL == "HEX" else "None")
        self.assertTrue([one["mark"] for one in marked["items"] if one["mark"] and one["mark"]["bits"]], marked["items"])
        self.restart()
        again = self.service.post(receipt("marked-sale"), id="sale:0002")
        for name in ("dateTime", "items"):
            self.assertEqual(marked[name], again[name])
        report = self.service.post({"type": "xReport"}, id="xrep:0001")
        self.assertEqual(self.PROTOCOL == "HEX", report["dateTime"] is not None, report)

    def test_two_at_once_are_one_document(self):
        answers = at_once([lambda: self.service.post(SALE, id="sale:0002")] * 8)
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
        shown = self.service.ask("GET", "/v1/registers/till1").body
        self.assertEqual(("sellReturn", "day:000003", True), (shown["lastReceipt"]["kind"], shown["lastReceipt"]["id"], shown["condition"]["paper"]))
        schemas = self.service.ask("GET", "/v1/openapi.json")["components"]["schemas"]
        register = schemas["register"]["properties"]
        self.assertEqual([set(), set()], [set(shown) - set(register), set(shown["condition"]) - set(register["condition"]["properties"])])
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

    def test_paper(self):
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        self.register.ask("PUT", "/paper", {"state": "out"})
        answer = self.service.post(SALE, id="sale:0001", wait=0)
        self.assertEqual((202, "queued"), (answer.status, answer["state"]), answer)
        self.until("paper")
        self.assertEqual("paper", self.service.ask("GET", "/v1/documents/sale:0001")["waiting"])
        self.register.ask("PUT", "/paper", {"state": "in"})
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.assertEqual([TOTAL], self.register.receipts())

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

    def test_a_byte_that_changed_is_no_other_drive(self):
        self.assert_issued(self.service.post(SALE, id="till1:0001"))
        drive = self.service.ask("GET", "/v1/documents/till1:0001")["drive"].encode().hex()
        frames = [frame for exchange in self.register.ask("GET", "/exchanges")["exchanges"] for frame in exchange["frames"]]
        place = next(frame["bytes"].index(drive) // 2 + 9 for frame in frames
                     if frame["meaning"]["name"] == "GetState" and drive in frame["bytes"])
        # Whichever of the readings with which it is reached anew.
        for nth in (1, 2, 3):
            self.service.ask("POST", "/v1/registers/till1/pause", {})
            self.register.ask("PUT", "/faults", {"rules": [{"mode": f"flip:{place}", "command": "GetState", "nth": nth}]})
            with self.service.client.events() as events:
                self.service.ask("POST", "/v1/registers/till1/resume", {})
                reached = events.until("register", register="till1")
                while (reached["state"], reached["waiting"]) not in (("ready", None), ("waiting", "newDrive")):
                    reached = events.until("register", register="till1")
            self.assertEqual("ready", reached["state"], nth)


class Stopped(ServiceTest):
    """Killed, or paused."""

    def test_pause_leaves_the_line_to_others(self):
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        busy = frctl(self.service, self.register.line, "status")
        self.assertNotEqual(0, busy.returncode)
        paused = self.service.ask("POST", "/v1/registers/till1/pause", {"by": "Петров"})
        self.assertEqual((200, "paused"), (paused.status, paused["state"]), paused)
        done = frctl(self.service, self.register.line, "cash-in", "10")
        self.assertEqual(0, done.returncode, done.stderr)
        queued = self.service.post(SALE, id="sale:0001", wait=0)
        self.assertEqual(202, queued.status)
        self.restart()
        again = self.service.ask("GET", "/v1/registers/till1")
        self.assertEqual(("paused", "Петров", paused["pausedSince"]),
                         (again["state"], again["pausedBy"], again["pausedSince"]))
        self.service.ask("POST", "/v1/registers/till1/resume")
        self.assert_issued(self.service.post(SALE, id="sale:0001"))

    def kill_workers(self):
        for worker in self.service.workers():
            os.kill(worker, signal.SIGKILL)

    def test_killed_in_the_middle(self):
        """While the register keeps the sale's end to itself, which one is for it to say."""
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        for number, kill in enumerate((self.restart, self.kill_workers), 1):
            with self.subTest(kill=kill.__name__):
                document = f"sale:{number:04}"
                self.begin_printing(document)
                kill()
                answer = self.service.post(SALE, id=document)
                self.assertIn(answer.status, (200, 201), answer)
                self.assert_issued(self.service.post(SALE, id=document), 200)
                self.assertEqual([TOTAL] * number, self.register.receipts())


if __name__ == "__main__":
    unittest.main()
