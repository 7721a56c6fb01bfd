#!/usr/bin/python3
"""What whoever keeps the service does: TLS, upgrade, backup, moving to another machine."""

import contextlib
import http.client
import os
import queue
import shutil
import signal
import socket
import ssl
import subprocess
import threading
import unittest
import unittest.mock
from pathlib import Path

from service import PATIENCE
from servicetest import SALE, ServiceTest

PROGRAM = os.environ["FRSERVER"]


class Keeping(ServiceTest):
    def command(self, *arguments):
        done = self.service.command(*arguments)
        self.assertEqual(0, done.returncode, done.stderr)
        return done

    def assert_does_not_start(self, part, status):
        done = self.service.command()
        self.assertIn(part, done.stderr)
        self.assertEqual(status, done.returncode, done.stderr)


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
        self.service.edit("listen = 127.0.0.1:0", "listen = 0.0.0.0:0")
        self.assert_does_not_start("without TLS", 2)
        self.command_of_certificate()
        self.service.edit("listen =", f"tls-certificate = {self.folder}/server.pem\ntls-key = {self.folder}/server.key\nlisten =")
        self.assert_does_not_start("token add", 2)
        self.service.edit("listen = 0.0.0.0:0", "listen = 127.0.0.1:0")
        token = self.command("token", "add", "shop", "--role", "sell").stdout.strip()
        self.service.edit("listen = 127.0.0.1:0", "listen = 0.0.0.0:0")
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
    def setUp(self):
        super().setUp()
        self.service.stop()
        self.program = self.folder / "bin" / "frserver"
        self.program.parent.mkdir()
        shutil.copy2(os.environ["FRSERVER"], self.program)
        (self.folder / "plugins").symlink_to(os.environ["FRSPF_PLUGIN"])
        self.service.edit(f"plugin = {os.environ['FRSPF_PLUGIN']}\n", "")
        started = unittest.mock.patch.dict(os.environ, {"FRSERVER": str(self.program)})
        started.start()
        self.addCleanup(started.stop)

    def start(self, name=None, **watchdog):
        """By whoever is told at a socket of that name, or at one in the file system."""
        name = name or str(self.folder / "notify")
        notices = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)
        notices.bind(name.replace("@", "\0"))
        self.addCleanup(notices.close)
        self.notices = queue.Queue()

        def listen():
            # As systemd does: the service waits for a watcher that does not.
            with contextlib.suppress(OSError):
                while True:
                    self.notices.put(notices.recv(4096))

        threading.Thread(target=listen, daemon=True).start()
        self.service.start(environment={"NOTIFY_SOCKET": name, "WATCHDOG_USEC": "200000", **watchdog})

    def install(self, content):
        """As a package does: the file of the program that runs stays what it is."""
        self.program.unlink()
        self.program.write_bytes(content)
        self.program.chmod(0o755)

    def test_service_goes_on_with_its_own_program(self):
        """Also where the plugin is looked for beside the program, whose file is another one by then."""
        self.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.install(b"#!/bin/sh\nexit 1\n")
        workers = self.service.workers()
        for worker in workers:
            self.assertEqual("frserver\n", Path(f"/proc/{worker}/comm").read_text(encoding="ascii"))
            # What it starts is not the service.
            self.assertNotRegex(Path(f"/proc/{worker}/environ").read_bytes(), b"NOTIFY_SOCKET|WATCHDOG")
            os.kill(worker, signal.SIGKILL)
        self.assert_issued(self.service.post(SALE, id="sale:0002"))
        self.assertFalse(set(workers) & set(self.service.workers()))
        self.assertEqual(2, len(self.register.receipts()))

    def test_upgrade(self):
        """In the middle of a sale, while others wait."""
        self.start()
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))
        version = self.service.command("--version").stdout.split()[1]
        newer = "9" + version[1:]
        program = self.program.read_bytes()
        self.assertIn(version.encode("utf-16-le"), program)
        self.install(program.replace(version.encode("utf-16-le"), newer.encode("utf-16-le")))
        self.service.edit("127.0.0.1:0", self.service.client.place)
        self.begin_printing(*(f"sale:{number:04}" for number in range(3)))
        done = self.service.command("upgrade")
        self.assertEqual(0, done.returncode, done)
        self.assertEqual(f"frserver {version} was replaced by {newer} (process {self.service.process.pid})\n", done.stdout)
        self.assertRegex(done.stderr, "tries the program.*\n.*finishes the documents")
        self.assertTrue(os.path.samefile(self.program, f"/proc/{self.service.process.pid}/exe"))
        for number in range(4):
            self.assertEqual("issued", self.service.post(SALE, id=f"sale:{number:04}")["state"])
        self.assertEqual(4, len(self.register.receipts()))
        told = iter(lambda: self.notices.get(timeout=PATIENCE).split(b"\n")[0], None)
        for notice in (b"READY=1", b"WATCHDOG=1", b"RELOADING=1", b"READY=1", b"WATCHDOG=1", b"STOPPING=1"):
            # Not before it has shown once more that it is alive.
            if notice == b"STOPPING=1":
                self.assertEqual(0, self.service.stop())
            self.assertEqual(notice, next(one for one in told if one != b"WATCHDOG=1" or notice == one))

    def test_upgrade_to_what_does_not_start(self):
        self.start()
        self.install(b"#!/bin/sh\necho no such library\nexit 127\n")
        with unittest.mock.patch.dict(os.environ, {"FRSERVER": f"/proc/{self.service.process.pid}/exe"}):
            failed = self.service.command("upgrade")
            second = self.service.command()
        self.assertEqual(1, failed.returncode, failed)
        self.assertIn("goes on: ", failed.stderr)
        self.assertNotIn("finishes", failed.stderr)
        self.assertIn("no such library", failed.stderr)
        self.assertIn(f"process {self.service.process.pid} serves from this journal", second.stderr)
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.service.stop()
        self.install(Path(PROGRAM).read_bytes())
        self.assertIn("no service serves", self.service.command("upgrade").stderr)


    def test_upgrade_to_what_hangs(self):
        """Nobody waits for it: neither clients, nor whoever has the service end."""
        # The watchdog is another process's, and would be told at once.
        self.start(f"@{self.folder}/notify", WATCHDOG_PID="1", WATCHDOG_USEC="2000")
        self.install(b"#!/bin/sh\nexec sleep 120\n")
        command = [PROGRAM, "--config", str(self.service.config), "upgrade"]
        with subprocess.Popen(command, stderr=subprocess.PIPE, text=True) as upgrade:
            self.assertIn("tries", upgrade.stderr.readline())
            self.assert_issued(self.service.post(SALE, id="sale:0001"))
            self.service.stop()
            self.assertEqual(0, self.service.process.returncode)
            _, said = upgrade.communicate(timeout=10)  # half of what it would wait for another start
        self.assertEqual(1, upgrade.returncode)
        self.assertIn("ends, as it was told to", said)
        self.assertNotIn("finishes", said)
        for notice in (f"READY=1\nSTATUS=ready on {self.service.url}", "STOPPING=1"):
            self.assertEqual(notice, self.notices.get(timeout=PATIENCE).decode())


class Moving(Keeping):
    def test_backup_knows_what_was_sold(self):
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.command("backup", str(self.folder / "copy"))
        self.assert_issued(self.service.post(SALE, id="sale:0002"))
        self.service.stop()
        self.put_back(self.folder / "copy")
        self.service.start()
        self.assert_issued(self.service.post(SALE, id="sale:0001"), 200)
        waiting = self.service.post(SALE, id="sale:0003", wait=0)
        self.assertEqual(202, waiting.status)
        self.until("needsReview")
        self.assertEqual(2, len(self.register.receipts()))

    def test_moving(self):
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        self.service.ask("POST", "/v1/registers/till1/pause")
        self.assertEqual(202, self.service.post(SALE, id="sale:0002", wait=0).status)
        exported = self.folder / "export"
        self.command("export", str(exported))
        self.assertEqual(503, self.service.post(SALE, id="sale:0003", wait=0).status)
        self.assertEqual(503, self.service.ask("GET", "/readyz").status)
        self.assertEqual(202, self.service.post(SALE, id="sale:0002", wait=0).status)
        self.assertEqual(0, self.service.stop(signal.SIGINT))
        self.assert_does_not_start("has moved to another machine", 1)
        self.service.edit("journal.sqlite", "new.sqlite")
        self.command("import", str(exported))
        self.assertEqual(1, self.service.command("import", str(exported)).returncode)
        # A register that has another name there.
        self.service.edit("[register till1]", "[register till2]")
        self.service.start()
        self.assertIn('1 documents wait for the register till1', "".join(self.service.lines))
        self.assertEqual(["till1"], [one["name"] for one in self.service.ask("GET", "/v1/registers")["notConfigured"]])
        self.assert_issued(self.service.post(SALE, "till2", id="sale:0001"), 200)
        self.service.ask("POST", "/v1/documents/sale:0002/move", {"register": "till2"})
        self.assertEqual("issued", self.service.post(SALE, "till2", id="sale:0002")["state"])
        self.assertEqual([], self.service.ask("GET", "/v1/registers")["notConfigured"])
        self.assertEqual(2, len(self.register.receipts()))


if __name__ == "__main__":
    unittest.main()
