#!/usr/bin/python3
"""frctl as a client of the service: the same commands, words and exit statuses as at the register's own line."""

import contextlib
import json
import os
import re
import socket
import ssl
import subprocess
import threading
import unittest
import urllib.parse

from service import CASHIER, PATIENCE, ROOT, Register
from servicetest import SALE, TOTAL, ServiceTest

ANSWERS = ROOT / "tests" / "e2e" / "answers.py"


class Stand:
    """Another program in the service's place. It meets one client after the other."""

    def __init__(self):
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.address = f"127.0.0.1:{self.listener.getsockname()[1]}"
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:
            try:
                client, _ = self.listener.accept()
            except OSError:
                return
            with client:
                self.meet(client)

    def meet(self, client):
        raise NotImplementedError

    def close(self):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()


class Relay(Stand):
    """Stands between client and service. What a client asks is passed on; it loses as many answers as it is told, or says that in their
    stead."""

    def __init__(self, url, lost, said=b""):
        self.place = urllib.parse.urlsplit(url)
        self.lost, self.said = lost, said
        super().__init__()
        self.url = f"service://{self.address}/till1"

    def meet(self, client):
        with socket.create_connection((self.place.hostname, self.place.port)) as service:
            # One request, and its answer as far as the service sends it.
            request = client.recv(65536)
            head, _, body = request.partition(b"\r\n\r\n")
            size = next(int(line.split(b":")[1]) for line in head.split(b"\r\n") if line.lower().startswith(b"content-length"))
            while len(body) < size:
                body += client.recv(65536)
            service.sendall(head + b"\r\nConnection: close\r\n\r\n" + body)
            answer = b"".join(iter(lambda: service.recv(65536), b""))
            if self.lost > 0:
                self.lost -= 1
                client.sendall(self.said)
            else:
                client.sendall(answer)


class Doubtful(Stand):
    """It has that certificate. It hears what it is sent, and answers nothing."""

    def __init__(self, certificate):
        self.heard = []
        self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        self.context.load_cert_chain(certificate)
        super().__init__()
        self.port = f"service:https://{self.address}/till1"

    def meet(self, client):
        with contextlib.suppress(OSError), self.context.wrap_socket(client, server_side=True) as line:
            self.heard += filter(None, [line.recv(65536)])


class Through(ServiceTest):
    def setUp(self):
        super().setUp()
        self.answers = []
        self.port = f"service:{self.service.url.rstrip('/')}/till1"

    def tearDown(self):
        """All that was printed is as the schema has it."""
        lines = "\n".join(json.dumps(one, ensure_ascii=False) for one in self.answers)
        done = subprocess.run(["/usr/bin/python3", ANSWERS, ROOT / "docs" / "output.schema.json"], input=lines,
                              capture_output=True, text=True, check=False)
        self.assertEqual(0, done.returncode, done.stdout + done.stderr)

    def frctl(self, *arguments, status=0, port=None, **environment):
        done = subprocess.run([os.environ["FRCTL"], "--port", port or self.port, "--json", *arguments], text=True,
                              capture_output=True, check=False, timeout=PATIENCE, env={**os.environ, **environment})
        self.assertEqual(status, done.returncode, (arguments, done))
        answer = json.loads(done.stdout)
        self.answers.append({"command": arguments, "answer": answer})
        return answer, done.stderr

    def file(self, content):
        file = self.folder / f"file{len(list(self.folder.iterdir()))}"
        file.write_text(content if isinstance(content, str) else json.dumps(content), encoding="utf-8")
        return str(file)


class Documents(Through):
    def test_a_day(self):
        sale, back = self.file(SALE), str(ROOT / "examples" / "return.json")
        text = self.folder / "text"
        text.write_text("Спасибо\n\nза покупку\n", encoding="utf-8")
        day = [("open-shift",), ("--cashier", "Петров П. П.", "cash-in", "1000.50"), ("--id", "till:0042", "sell", sale), ("--cashier", CASHIER, "refund", back),
               ("x-report",), ("print", str(text)), ("print-last-document",), ("print-document", "1"), ("cash-out", "500"),
               ("--id", "till:000z", "z-report"), ("accounting-report",)]
        for command in day:
            answer, said = self.frctl(*command)
            self.assertEqual(("issued", False), (answer["state"], answer["replayed"]), command)
            self.assertEqual("--id" not in command, answer["id"] in said, said)
        self.assertIn("за покупку", self.register.tape())
        self.assertEqual(1, self.register.tape().count("Петров"))
        again, _ = self.frctl("--id", "till:0042", "sell", sale)
        self.assertEqual((305.23, True), (again["total"], again["replayed"]))
        self.assertEqual([TOTAL], self.register.receipts())
        # As at the line: no document is needed, and there is none.
        closed, _ = self.frctl("z-report")
        self.assertEqual((None, None, None), (closed["id"], closed["state"], closed["error"]))
        # Nothing was at its close.
        early, _ = self.frctl("x-report", status=1)
        self.assertEqual(("notIssued", "refused", "shiftClosed"), (early["state"], early["reason"], early["error"]["kind"]))
        status, _ = self.frctl("status")
        self.assertEqual((False, True, "ready"), (status["shiftOpen"], status["testDrive"], status["service"]["state"]))

    def test_what_fails(self):
        sale = self.file(SALE)
        self.frctl("--id", "till:0001", "sell", sale)
        poor, said = self.frctl("cash-out", "5000", status=4)
        self.assertEqual(("notIssued", "refused", "cash"), (poor["state"], poor["reason"], poor["error"]["kind"]))
        self.assertIn(poor["error"]["text"], said)
        other, _ = self.frctl("--id", "till:0001", "sell", self.file({**SALE, "payments": [{"type": "cash", "sum": 600}]}), status=2)
        self.assertEqual("UsageError", other["error"]["exception"])
        wrong, _ = self.frctl("sell", self.file({**SALE, "items": [{"name": "Хлеб", "price": -1}]}), status=2)
        self.assertIn("items[0].price", [one["path"] for one in wrong["error"]["findings"]])
        for port, part in (("service:till9", "till9"), ("service:http://127.0.0.1:x/till1", "service:NAME"), ("service:", "service:NAME")):
            port = port.replace("service:till9", self.port.replace("till1", "till9"))
            self.assertIn(part, self.frctl("open-shift", port=port, status=2)[1])
        # None of these may look as if it were done.
        count = len(self.service.ask("GET", "/v1/documents")["documents"])
        for command in (("params", "list"), ("registration", "--tax-systems", "osn"), ("journal", "list"), ("doctor",), ("cancel",),
                        ("--protocol", "HEX", "sell", sale), ("--trace", "-", "sell", sale), ("sell", sale, "--drop", "x"),
                        ("sell", self.file({"type": "zReport"})), ("refund", self.file(SALE)), ("cash-in", "1e3"),
                        ("--cashier-inn", "772100000040", "z-report"), ("--id", "short", "x-report")):
            self.frctl(*command, status=2)
        self.assertEqual(count, len(self.service.ask("GET", "/v1/documents")["documents"]))

    def test_what_is_refused_as_at_the_line(self):
        """On its way a document is refused, at its close the register is asked whether it has it all the same."""
        line = Register()
        self.addCleanup(line.stop)
        at_line = ("--plugin", os.environ["FRSPF_PLUGIN"], "--protocol", "HEX", "--exclusive", "yes", "--cashier", CASHIER,
                   "--journal", str(self.folder / "line.sqlite"))
        sale = self.file(SALE)
        for command, refused, status in ((("sell", sale), "OpenDocument", 1), (("sell", sale), "AddPaymentObject", 1),
                                         (("sell", sale), "Payment", 1), (("sell", sale), "FinishDocument", 4),
                                         (("cash-in", "10"), "OpenDocument", 1), (("cash-in", "10"), "FinishDocument", 4),
                                         (("z-report",), "PrintShiftCloseReport", 4)):
            for register, port, options in ((line, line.line, at_line), (self.register, self.port, ())):
                self.frctl(*options, "open-shift", port=port)
                register.ask("PUT", "/faults", {"rules": [{"mode": "answer:81", "command": refused}]})
                with self.subTest(command=command, refused=refused, port=port):
                    answer, _ = self.frctl(*options, *command, port=port, status=status)
                    self.assertEqual(("notIssued", "refused"), (answer["state"], answer["reason"]), answer)
                register.ask("DELETE", "/faults")

    def test_a_document_that_waits(self):
        self.frctl("open-shift")
        self.register.ask("PUT", "/paper", {"state": "out"})
        sale = self.file(SALE)
        with self.service.client.events() as events:
            waiting = threading.Thread(target=lambda: events.until("register", register="till1", waiting="paper"))
            waiting.start()
            late, said = self.frctl("--wait", "1", "--id", "till:0001", "sell", sale, status=5)
            waiting.join(PATIENCE)
        # Its next try may be under way just then.
        self.assertIn(late["state"], ("queued", "running"))
        self.assertIn("same id", said)
        self.assertIs(False, self.frctl("status")[0]["paper"])
        self.register.ask("PUT", "/paper", {"state": "in"})
        self.assertEqual("issued", self.frctl("--id", "till:0001", "sell", sale)[0]["state"])
        self.assertEqual([TOTAL], self.register.receipts())


class Detected(Through):
    def test_its_section_is_one_of_the_service(self):
        self.service.stop()
        done = subprocess.run([os.environ["FRCTL"], "--plugin", os.environ["FRSPF_PLUGIN"], "--protocol", "HEX", "detect", self.register.line],
                              capture_output=True, text=True, check=False, timeout=PATIENCE, env={**os.environ, "LC_ALL": "C"})
        section = "[register till1]" + done.stdout.partition("[register till1]")[2]
        service = self.service.config.read_text(encoding="utf-8").partition("[register")[0]
        for text in (section, re.sub("^# (?=[a-z-]+ = )", "", section, flags=re.MULTILINE)):
            self.service.config.write_text(service + text, encoding="utf-8")
            checked = self.service.command("check-config")
            self.assertEqual(0, checked.returncode, (done, checked))
            self.assertIn(f"register till1 on {self.register.line}, HEX", checked.stdout)
            self.assertEqual(text is section, "no cashier" in checked.stdout)
        self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"))


class Line(Through):
    def test_an_answer_that_is_lost(self):
        relay = Relay(self.service.url, 2)
        self.addCleanup(relay.close)
        answer, said = self.frctl("sell", self.file(SALE), port=relay.url)
        self.assertEqual("issued", answer["state"])
        self.assertIn("asking again", said)
        self.assertEqual([TOTAL], self.register.receipts())
        # Nobody here can know, and the id is told that can.
        relay.lost = 1000
        lost, said = self.frctl("--wait", "1", "cash-in", "10", port=relay.url, status=5)
        self.assertEqual(("unknown", "line"), (lost["state"], lost["error"]["kind"]))
        self.assertIn(f"--id {lost['id']}", said)
        self.assertTrue(self.frctl("--id", lost["id"], "cash-in", "10")[0]["replayed"])

    def test_a_service_that_cannot_tell(self):
        """Its journal may have failed behind the document; of one that stops an earlier run may have had it."""
        for kind, given in (("journal", ()), ("journal", ("--id", "till:0001")), ("stopping", ("--id", "till:0002"))):
            with self.subTest(kind, given=given):
                problem = json.dumps({"type": kind, "title": "Not now", "status": 503}).encode()
                relay = Relay(self.service.url, 1000, b"HTTP/1.1 503 Service Unavailable\r\nContent-Type: application/problem+json\r\n"
                              b"Connection: close\r\nContent-Length: %d\r\n\r\n%s" % (len(problem), problem))
                self.addCleanup(relay.close)
                untold, said = self.frctl("--wait", "0", *given, "cash-in", "10", port=relay.url, status=5)
                self.assertEqual("unknown", untold["state"])
                self.assertIn(f"--id {untold['id']}", said)
                self.assertTrue(self.frctl("--id", untold["id"], "cash-in", "10")[0]["replayed"])

    def test_no_service(self):
        self.service.stop()
        gone, _ = self.frctl("--wait", "0", "cash-in", "10", status=1)
        self.assertEqual(("notIssued", "line"), (gone["state"], gone["error"]["kind"]))
        # An earlier run may have made it.
        self.assertEqual("unknown", self.frctl("--wait", "0", "--id", "till:0001", "cash-in", "10", status=5)[0]["state"])
        self.assertEqual("line", self.frctl("status", status=1)[0]["error"]["kind"])
        # It is started anew in the meantime.
        self.service.edit("127.0.0.1:0", self.service.client.place)
        started = threading.Thread(target=self.service.start)
        started.start()
        self.assertEqual("issued", self.frctl("--id", "till:0001", "cash-in", "10")[0]["state"])
        started.join()

    def doubtful(self, host, days):
        """Its certificate stands for itself: nobody here knows an authority of its."""
        file, asked = self.folder / f"{host}{days}.pem", self.folder / "asked"
        openssl = lambda *what, **how: subprocess.run(["openssl", *what], capture_output=True, text=True, check=True, **how)
        openssl("ecparam", "-genkey", "-noout", "-name", "prime256v1", "-out", file)
        openssl("req", "-new", "-key", file, "-subj", "/CN=till", "-out", asked)
        made = openssl("x509", "-req", "-in", asked, "-signkey", file, "-days", days, "-extfile", "/dev/stdin", input=f"subjectAltName={host}")
        file.write_text(file.read_text(encoding="utf-8") + made.stdout, encoding="utf-8")
        other = Doubtful(file)
        self.addCleanup(other.close)
        return other

    def test_nobody_to_trust(self):
        """Nothing is sent, and it is told at once, not only after the time that a service may take to start."""
        own = "IP:127.0.0.1"
        others = [(self.doubtful(*made), part) for made, part in (((own, "9"), "not trusted"), (("DNS:other.example", "9"), "did not match"),
                                                                 ((own, "-1"), "expired"))]
        for port, part in [(other.port, part) for other, part in others] + [(self.port.replace("http:", "https:"), "no TLS came about")]:
            with self.subTest(part):
                answer, said = self.frctl("cash-in", "10", port=port, status=1)
                self.assertEqual(("notIssued", "line"), (answer["state"], answer["error"]["kind"]))
                for words in (part, "nothing was sent"):
                    self.assertIn(words, said)
                # What just closes the line may be a service that starts.
                self.assertEqual("Connection closed" in said, "asking again" in said, said)
                # An earlier run may have made it.
                answer, said = self.frctl("cash-in", "10", "--id", "till:0001", port=port, status=5)
                self.assertEqual("unknown", answer["state"])
                self.assertIn("nothing was sent", said)
                self.assertNotIn("may have been issued", said)
                self.assertIn(part, self.frctl("status", port=port, status=1)[1])
        self.assertEqual([], [other.heard for other, _ in others if other.heard])

    def test_a_service_that_ends_over_a_document(self):
        """The line is made anew by itself, and is refused then: that nobody is there now says nothing of what was sent."""
        listener, heard = socket.create_server(("127.0.0.1", 0)), []

        def end():
            with listener.accept()[0] as client:
                heard.append(client.recv(65536))
                listener.close()

        ending = threading.Thread(target=end)
        ending.start()
        port = f"service:http://127.0.0.1:{listener.getsockname()[1]}/till1"
        lost, said = self.frctl("--wait", "0", "cash-in", "10", port=port, status=5)
        ending.join(PATIENCE)
        self.assertEqual(("unknown", "line"), (lost["state"], lost["error"]["kind"]))
        self.assertIn(b"cashIn", heard[0])
        self.assertIn(f"--id {lost['id']}", said)

    def test_tokens(self):
        token = self.service.command("token", "add", "shop", "--role", "sell").stdout.strip()
        self.restart()
        self.port = f"service:{self.service.url.rstrip('/')}/till1"
        self.assertIn("FRSERVER_TOKEN", self.frctl("cash-in", "10", status=1)[1])
        self.frctl("cash-in", "10", FRSERVER_TOKEN=token)
        section = self.folder / "frctl.ini"
        section.write_text(f"[till1]\nport = {self.port}\ntoken-file = {self.file(token)}\ncashier = {CASHIER}\n", encoding="utf-8")
        done = subprocess.run([os.environ["FRCTL"], "--config", section, "--register", "till1", "cash-in", "20"],
                              capture_output=True, text=True, check=False, timeout=PATIENCE)
        self.assertEqual((0, True), (done.returncode, done.stdout.startswith("cash in: 20.00\nid: ")), done)


if __name__ == "__main__":
    unittest.main()
