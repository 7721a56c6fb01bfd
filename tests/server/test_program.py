#!/usr/bin/python3
"""The service as a program: whom it tells, whom it lets in, its command line."""

import base64
import hashlib
import hmac
import json
import queue
import signal
import unittest

from servicetest import SALE, Listener, ServiceTest


class Taker(Listener):
    """A program that a webhook tells; it takes the news of a shift not at once, and not before it has heard of a sale."""

    told = []
    taken = queue.Queue()

    def do_POST(self):  # pylint: disable=invalid-name
        body = self.body()
        kinds = {json.loads(one)["kind"] for _, one in self.told}
        self.told.append((dict(self.headers), body))
        is_taken = json.loads(body)["kind"] == "sell" or kinds == {"sell", "openShift"}
        self.send_response(204 if is_taken else 500)
        self.end_headers()
        if is_taken:
            self.taken.put((dict(self.headers), body))


class Program(ServiceTest):
    def test_tells_a_webhook(self):
        taker = self.listen(Taker)
        self.service.stop()
        with open(self.service.config, "a", encoding="utf-8") as config:
            config.write(f"[webhook]\nurl = http://127.0.0.1:{taker.server_port}/ends\nsecret = a secret of ours\n")
        self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        # The shift that it opened is a document, too; what was not taken comes again, and holds no other up.
        sale, shift = (Taker.taken.get(timeout=60) for _ in range(2))
        self.assertEqual(["sell", "openShift"], [json.loads(body)["kind"] for _, body in (sale, shift)])
        self.assertEqual({(headers["webhook-id"], body) for headers, body in (sale, shift)},
                         {(headers["webhook-id"], body) for headers, body in Taker.told})
        headers, body = sale
        self.assertEqual(("sale:0001", "issued"), (json.loads(body)["id"], json.loads(body)["state"]))
        signed = b".".join([headers["webhook-id"].encode(), headers["webhook-timestamp"].encode(), body])
        signature = base64.b64encode(hmac.new(b"a secret of ours", signed, hashlib.sha256).digest()).decode()
        self.assertEqual("v1," + signature, headers["webhook-signature"])

    def test_tokens(self):
        made = self.service.command("token", "add", "shop", "--role", "sell", "--registers", "till1")
        self.assertEqual(0, made.returncode, made.stderr)
        self.service.process.send_signal(signal.SIGHUP)
        self.service.read_address("tokens:")
        self.assertEqual(401, self.service.ask("GET", "/v1/registers").status)
        self.assertEqual(200, self.service.ask("GET", "/healthz").status)
        self.service.client.token = made.stdout.strip()
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.assertEqual(403, self.service.ask("POST", "/v1/registers/till1/pause").status)
        self.assertIn("shop  sell  till1\n", self.service.command("token", "list").stdout)
        self.assertEqual(1, self.service.command("token", "remove", "nobody").returncode)
        (self.folder / "tokens").unlink()
        self.service.process.send_signal(signal.SIGHUP)
        self.assertIn("gone", self.service.read_address(r"tokens: \S+ is"))
        self.assertEqual(401, self.service.ask("GET", "/v1/registers").status)

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
