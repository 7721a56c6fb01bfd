#!/usr/bin/python3
"""What whoever keeps the service does: TLS, backup, moving to another machine."""

import http.client
import os
import shutil
import signal
import socket
import ssl
import sys
import unittest
import unittest.mock
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
# pylint: disable=wrong-import-position
from service import PATIENCE, receipt  # noqa: E402
from test_service import ServiceTest  # noqa: E402

SALE = receipt()


class Keeping(ServiceTest):
    def command(self, *arguments):
        done = self.service.command(*arguments)
        self.assertEqual(0, done.returncode, done.stderr)
        return done

    def assert_does_not_start(self, part, status):
        done = self.service.command()
        self.assertIn(part, done.stderr)
        self.assertEqual(status, done.returncode, done.stderr)

    def configure(self, old, new):
        text = self.service.config.read_text(encoding="utf-8")
        self.assertIn(old, text)
        self.service.config.write_text(text.replace(old, new), encoding="utf-8")


class Tls(Keeping):
    def ask(self, token=None):
        """Status and number of the server's certificate, as a client has them that trusts the authority."""
        port = int(self.service.url.rsplit(":", 1)[1].strip("/"))
        context = ssl.create_default_context(cafile=str(self.folder / "frspf-ca.pem"))
        with socket.create_connection(("127.0.0.1", port), timeout=PATIENCE) as line:
            client = http.client.HTTPConnection("till.shop.example", port)
            client.sock = context.wrap_socket(line, server_hostname="till.shop.example")
            number = client.sock.getpeercert()["serialNumber"]
            client.request("GET", "/v1/registers", headers={"Authorization": f"Bearer {token}"} if token else {})
            status = client.getresponse().status
            client.close()
        return status, number

    def test_other_addresses(self):
        self.service.stop()
        self.configure("listen = 127.0.0.1:0", "listen = 0.0.0.0:0")
        self.assert_does_not_start("without TLS", 2)
        self.command_of_certificate()
        self.configure("listen =", f"tls-certificate = {self.folder}/server.pem\ntls-key = {self.folder}/server.key\nlisten =")
        self.assert_does_not_start("token add", 2)
        self.configure("listen = 0.0.0.0:0", "listen = 127.0.0.1:0")
        token = self.command("token", "add", "shop", "--role", "sell").stdout.strip()
        self.configure("listen = 127.0.0.1:0", "listen = 0.0.0.0:0")
        self.service.start()
        self.assertTrue(self.service.url.startswith("https://"), self.service.url)
        self.assertEqual(401, self.ask()[0])
        status, number = self.ask(token)
        self.assertEqual(200, status)
        for name in ("server.pem", "server.key"):
            (self.folder / name).rename(self.folder / f"former-{name}")
        self.service.process.send_signal(signal.SIGHUP)
        self.service.read_address("TLS:")
        self.assertEqual((200, number), self.ask(token), "what cannot be read changes nothing")
        self.command_of_certificate()
        (self.folder / "tokens").unlink()
        self.service.process.send_signal(signal.SIGHUP)
        self.service.read_address("tokens:")
        status, renewed = self.ask(token)
        self.assertNotEqual(number, renewed)
        self.assertEqual(401, status, "others are not let in for want of the file")

    def command_of_certificate(self):
        self.assertIn("certutil", self.command("cert", "init", "till.shop.example").stderr)


class Update(Keeping):
    def test_service_goes_on_with_its_own_program(self):
        """Also where the plugin is looked for beside the program, whose file is another one by then."""
        self.service.stop()
        program = self.folder / "bin" / "frserver"
        program.parent.mkdir()
        shutil.copy2(os.environ["FRSERVER"], program)
        (self.folder / "plugins").symlink_to(os.environ["FRSPF_PLUGIN"])
        self.configure(f"plugin = {os.environ['FRSPF_PLUGIN']}\n", "")
        with unittest.mock.patch.dict(os.environ, {"FRSERVER": str(program)}):
            self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        program.unlink()
        program.write_text("#!/bin/sh\nexit 1\n", encoding="ascii")
        program.chmod(0o755)
        workers = self.service.workers()
        for worker in workers:
            self.assertEqual("frserver\n", Path(f"/proc/{worker}/comm").read_text(encoding="ascii"))
            os.kill(worker, signal.SIGKILL)
        self.assert_issued(self.service.post(SALE, id="sale:0002"))
        self.assertFalse(set(workers) & set(self.service.workers()))
        self.assertEqual(2, len(self.register.receipts()))


class Moving(Keeping):
    def test_backup_knows_what_was_sold(self):
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.command("backup", str(self.folder / "copy"))
        self.assert_issued(self.service.post(SALE, id="sale:0002"))
        self.service.stop()
        (self.folder / "copy").replace(self.folder / "journal.sqlite")
        for rest in ("-wal", "-shm"):
            (self.folder / f"journal.sqlite{rest}").unlink(missing_ok=True)
        self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"), 200)
        waiting = self.service.post(SALE, id="sale:0003", wait=0)
        self.assertEqual(202, waiting.status)
        with self.service.client.events() as events:
            if self.service.ask("GET", "/v1/registers/till1").body.get("waiting") != "needsReview":
                events.until("register", register="till1", waiting="needsReview")
        self.assertEqual(2, len(self.register.receipts()))

    def test_moving(self):
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.service.ask("POST", "/v1/registers/till1/pause")
        self.assertEqual(202, self.service.post(SALE, id="sale:0002", wait=0).status)
        exported = self.folder / "export"
        self.command("export", str(exported))
        refused = self.service.post(SALE, id="sale:0003", wait=0)
        self.assertGreaterEqual(refused.status, 500, refused)
        self.assertEqual(202, self.service.post(SALE, id="sale:0002", wait=0).status)
        self.service.stop()
        self.assert_does_not_start("has moved to another machine", 1)
        self.configure("journal.sqlite", "new.sqlite")
        self.command("import", str(exported))
        self.assertEqual(1, self.service.command("import", str(exported)).returncode)
        self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"), 200)
        self.assertEqual("issued", self.service.post(SALE, id="sale:0002")["state"])
        self.assertEqual(2, len(self.register.receipts()))


if __name__ == "__main__":
    unittest.main()
