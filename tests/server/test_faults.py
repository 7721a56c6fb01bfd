#!/usr/bin/python3
"""What becomes of documents when the journal cannot be written or read: refused with the reason, or kept."""

import contextlib
import errno
import os
import signal
import sqlite3
import subprocess
import sys
import time
import unittest

from servicetest import SALE, TOTAL, ServiceTest


class Faults(ServiceTest):
    def setUp(self):
        super().setUp()
        self.assert_issued(self.service.post({"type": "openShift"}, id="shift:0001"))

    def assert_refused(self, answer, words):
        """Not accepted, with the reason, and to be tried again."""
        self.assertEqual((503, "journal"), (answer.status, answer["type"]), answer)
        self.assertEqual("application/problem+json", answer.headers["Content-Type"])
        self.assertGreater(int(answer.headers["Retry-After"]), 0)
        self.assertRegex(answer["detail"], words)

    def assert_refuses(self, words):
        """A new document is, and whoever watches the service is told why."""
        self.assert_refused(self.service.post(SALE, id="sale:new1", wait=0), words)
        self.assert_refused(self.service.ask("GET", "/readyz"), words)
        self.assertEqual(200, self.service.ask("GET", "/healthz").status)

    def assert_goes_on(self, *ids):
        """What was accepted is issued, what was not is not known, and may be posted now; all of it once."""
        for document in ids:
            # As clients do: the same id again while it is 503.
            for _ in range(20):
                if (answer := self.service.post(SALE, id=document)).status != 503:
                    break
                self.until(None)
            self.assertIn(answer.status, (200, 201), answer)
        self.assertEqual(404, self.service.ask("GET", "/v1/documents/sale:new1").status)
        self.assert_issued(self.service.post(SALE, id="sale:new1"))
        self.assertEqual(200, self.service.ask("GET", "/readyz").status)
        self.assertEqual([TOTAL] * (len(ids) + 1), self.register.receipts())


class FullDisk(Faults):
    def prepare(self):
        mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", "size=4m", "none", self.folder], check=False)
        if mounted.returncode != 0:
            self.skipTest("nothing may be mounted here")
        self.addCleanup(subprocess.run, ["umount", "--lazy", self.folder], check=True)

    @contextlib.contextmanager
    def full(self):
        # What SQLite has written before it writes over without new room.
        with contextlib.closing(sqlite3.connect(self.journal)) as journal:
            journal.execute("PRAGMA wal_checkpoint(TRUNCATE)")
        filler = self.folder / "filler"
        with open(filler, "wb", buffering=0) as file:
            with self.assertRaises(OSError) as full:
                while file.write(bytes(512)):
                    pass
            self.assertEqual(errno.ENOSPC, full.exception.errno)
        yield
        filler.unlink()

    def test_nothing_is_accepted(self):
        self.service.ask("POST", "/v1/registers/till1/pause")
        self.assertEqual(202, self.service.post(SALE, id="sale:0001", wait=0).status)
        with self.full():
            self.assert_refuses("full|room")
            self.assertEqual("queued", self.service.ask("GET", "/v1/documents/sale:0001")["state"])
            self.service.ask("POST", "/v1/registers/till1/resume")
            self.until("journal")
            self.assertEqual([], self.register.receipts())
        self.assert_goes_on("sale:0001")

    def test_what_the_register_makes_meanwhile_is_known_later(self):
        self.begin_printing("sale:0001")
        with self.full():
            self.until("journal")
            self.assertEqual("running", self.service.ask("GET", "/v1/documents/sale:0001")["state"])
            self.assertEqual([TOTAL], self.register.receipts())
            self.assert_refuses("full|room")
        self.assert_goes_on("sale:0001")


class LockedJournal(Faults):
    def test_another_program_has_it(self):
        self.begin_printing("sale:0001")
        with contextlib.closing(sqlite3.connect(self.journal)) as other:
            other.execute("BEGIN EXCLUSIVE")
            self.assert_refuses("locked")
            # The service does not wait for it with each question, and tells what it knows.
            begin = time.monotonic()
            for number in range(20):
                self.assert_refused(self.service.post(SALE, id=f"sale:{number:04}x", wait=0), "locked")
            self.assertEqual("running", self.service.ask("GET", "/v1/documents/sale:0001")["state"])
            self.assertLess(time.monotonic() - begin, 20)
        self.assert_goes_on("sale:0001")


class LostJournal(Faults):
    def test_moved_away(self):
        self.service.ask("POST", "/v1/registers/till1/pause")
        self.assertEqual(202, self.service.post(SALE, id="sale:0001", wait=0).status)
        away = self.journal.rename(self.folder / "away")
        self.assert_refuses("moved away or replaced")
        for worker in self.service.workers():
            os.kill(worker, signal.SIGKILL)
        self.service.ask("POST", "/v1/registers/till1/resume")
        self.until("journal")
        self.assertFalse(self.journal.exists(), "nobody makes an empty one in its place")
        away.rename(self.journal)
        self.assert_goes_on("sale:0001")

    def test_replaced(self):
        done = self.service.command("backup", str(self.folder / "copy"))
        self.assertEqual(0, done.returncode, done.stderr)
        self.assert_issued(self.service.post(SALE, id="sale:0001"))
        (self.folder / "copy").replace(self.journal)
        self.assert_refuses("moved away or replaced")
        self.assertEqual("issued", self.service.ask("GET", "/v1/documents/sale:0001")["state"])


class DamagedJournal(Faults):
    def damage(self):
        """All pages but the first one are written over."""
        with contextlib.closing(sqlite3.connect(self.journal)) as journal:
            journal.execute("PRAGMA wal_checkpoint(TRUNCATE)")
        size = self.journal.stat().st_size
        with open(self.journal, "r+b") as file:
            file.seek(4096)
            file.write(b"\xa5" * (size - 4096))

    def test_while_it_is_used(self):
        self.damage()
        # What somebody has in memory may do for a document that was accepted already.
        self.service.post(SALE, id="sale:0001", wait=0)
        self.until("journal")
        self.assert_refuses("damaged|malformed")
        self.assertLessEqual(len(self.register.receipts()), 1)

    def test_at_rest(self):
        done = self.service.command("backup", str(self.folder / "copy"))
        self.assertEqual(0, done.returncode, done.stderr)
        self.service.stop()
        self.damage()
        done = self.service.command()
        self.assertEqual(1, done.returncode, done.stderr)
        self.assertRegex(done.stderr, "journal.sqlite: .*damaged; put a backup in its place")
        self.put_back(self.folder / "copy")
        self.service.start()
        self.assert_goes_on()


class ReadOnlyJournal(Faults):
    def test_its_owner_is_somebody_else(self):
        """The service has the rights of a user who may read alone."""
        self.service.stop()
        self.journal.chmod(0o444)
        self.folder.chmod(0o777)
        self.service.start(**({"user": "nobody"} if os.geteuid() == 0 else {}))
        self.assert_refuses("readonly|read-only")
        self.service.stop()
        self.journal.chmod(0o666)
        self.service.start()
        self.assert_goes_on()


@unittest.skipUnless(os.environ.get("CLOCK_JUMP_LIBRARY"), "no library is loaded ahead of the sanitizers'")
class JumpingClock(Faults):
    """The service's, and its workers'; the register's and that of the test stay."""

    def setUp(self):
        super().setUp()
        self.service.stop()
        self.jump(0)
        self.service.start({"LD_PRELOAD": os.environ["CLOCK_JUMP_LIBRARY"], "CLOCK_JUMP": str(self.folder / "jump")})

    def jump(self, hours):
        (self.folder / "new").write_text(str(hours * 3600), encoding="ascii")
        (self.folder / "new").rename(self.folder / "jump")

    def assert_expires(self, document):
        with self.service.client.events() as events:
            if self.service.ask("GET", f"/v1/documents/{document}")["state"] == "queued":
                events.until("document", id=document, state="notIssued")
        self.assertEqual("expired", self.service.ask("GET", f"/v1/documents/{document}")["reason"])

    def test_nothing_is_late_and_the_register_sells_on(self):
        self.service.ask("POST", "/v1/registers/till1/pause")
        for number, hours in enumerate((5, -5)):
            self.assertEqual(202, self.service.post(SALE, id=f"sale:late{number}", wait=0).status)
            self.jump(hours)
            self.assert_expires(f"sale:late{number}")
        self.service.ask("POST", "/v1/registers/till1/resume")
        for number, hours in enumerate((5, -5, 0)):
            self.jump(hours)
            self.assert_issued(self.service.post(SALE, id=f"sale:next{number}"))
            for worker in self.service.workers():
                os.kill(worker, signal.SIGKILL)
            self.assert_issued(self.service.post(SALE, id=f"sale:anew{number}"))
            till = self.service.ask("GET", "/v1/registers/till1")
            self.assertEqual(hours != 0, "clock" in [alarm["kind"] for alarm in till["alarms"]], till)
            self.assertGreaterEqual(till["stateAge"], 0)
        self.assertEqual([TOTAL] * 6, self.register.receipts())


def take_rights_to_mount():
    """Whoever is not root is so among the mounts of this process alone."""
    command = ["unshare", "--user", "--map-root-user", "--mount"]
    if os.geteuid() != 0 and subprocess.run([*command, "true"], check=False).returncode == 0:
        os.execvp(command[0], [*command, sys.executable, *sys.argv])


if __name__ == "__main__":
    take_rights_to_mount()
    unittest.main()
