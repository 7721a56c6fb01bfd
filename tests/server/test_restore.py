#!/usr/bin/python3
"""An older state of the database of many machines is put back, and the registers know more than it does."""

import datetime
import shutil
import signal
import tempfile
import time
import unittest
from pathlib import Path

from database import Database
from service import PATIENCE
from servicetest import SALE
from sharedstore import SharedStoreTest


class ArchivedDatabase(Database):
    """With all that it wrote beside it, as docs/service.md has it kept."""

    def __init__(self):
        self.archive = Path(tempfile.mkdtemp())
        self.archive.chmod(0o777)
        super().__init__("archive_mode=on", f"archive_command=test ! -f {self.archive}/%f && cp %p {self.archive}/%f")

    def close(self):
        super().close()
        shutil.rmtree(self.archive)

    def copy(self):
        copying = self.run("pg_basebackup", "-h", self.folder, "-U", "postgres", "-D", f"{self.folder}/base",
                           "--checkpoint=fast", "--no-sync")
        assert copying.wait(PATIENCE) == 0

    def put_back(self, moment):
        """The database as it was at that time."""
        # As systemctl does: all is archived then.
        self.stop(signal.SIGINT)
        shutil.rmtree(f"{self.folder}/data")
        shutil.move(f"{self.folder}/base", f"{self.folder}/data")
        with open(f"{self.folder}/data/postgresql.auto.conf", "a", encoding="utf-8") as settings:
            settings.write(f"restore_command = 'cp {self.archive}/%f %p'\nrecovery_target_time = '{moment}'\n"
                           "recovery_target_action = promote\n")
        Path(f"{self.folder}/data/recovery.signal").touch()
        self.start()
        self.wait()
        deadline = time.monotonic() + PATIENCE
        while self.ask("SELECT pg_is_in_recovery() AS isso")[0]["isso"]:
            assert time.monotonic() < deadline


class Restore(SharedStoreTest):
    DATABASE = ArchivedDatabase

    def setUp(self):
        super().setUp()
        for name in ("hex", "xml"):
            self.serve(name, name.upper())
        self.migrate(self.services["hex"])
        self.start_all()

    def start_all(self):
        for service in self.services.values():
            self.start(service)

    def sell(self, number):
        for name, service in self.services.items():
            sold = service.post(SALE, name, id=f"rack:{name}:{number}")
            self.assertEqual("issued", sold["state"], sold)

    def register(self, name):
        return self.services[name].ask("GET", f"/v1/registers/{name}")

    def begin(self, number):
        """A document that is under way (HEX), or waits (XML), for as long as the caller likes."""
        self.services["xml"].ask("POST", "/v1/registers/xml/pause")
        with self.registers["hex"].meets(mode="busy:2"):
            for name, service in self.services.items():
                self.assertEqual(202, service.post(SALE, name, wait=0, id=f"rack:{name}:{number}").status)

    def test_registers_that_know_later_documents(self):
        self.sell(1)
        self.database.copy()
        self.sell(2)
        self.begin(3)
        # By the clock of this machine, which is the database's: nobody else is asked while the register keeps the end to itself.
        moment = datetime.datetime.now(datetime.timezone.utc).isoformat(" ")
        self.services["xml"].ask("POST", "/v1/registers/xml/resume")
        self.sell(3)
        self.sell(4)
        self.assertIn("serves from this journal", self.services["hex"].command("restored").stderr)
        self.services["hex"].stop()
        # Another machine's, as it would be.
        refused = self.services["hex"].command("restored")
        self.assertEqual((1, ""), (refused.returncode, refused.stdout), refused)
        self.assertRegex(refused.stderr, rf"is in use: .*frspf {self.services['xml'].process.pid} .*end all its services")
        self.services["xml"].stop()
        self.database.put_back(moment)
        restored = self.services["hex"].command("restored")
        self.assertEqual((0, ["rack:hex:3", "rack:xml:3"]), (restored.returncode, sorted(restored.stdout.split())), restored)
        self.start_all()
        # It was paused at that time.
        self.services["xml"].ask("POST", "/v1/registers/xml/resume")
        for name, service in self.services.items():
            with self.subTest(name):
                # Before anybody wants to sell.
                self.until(service, name, waiting="needsReview")
                self.assertRegex(self.register(name)["waitingText"],
                                 f"documents 5 to 6 of fiscal drive .*/registers/{name}/accept")
                for number, state in ((1, "issued"), (2, "issued"), (3, "unknown"), (4, None)):
                    self.assertEqual(state, service.ask("GET", f"/v1/documents/rack:{name}:{number}").body.get("state"))
                self.assertEqual(202, service.post(SALE, name, wait=0, id=f"rack:{name}:5").status)
                self.assertEqual(409, service.post(SALE, name, id=f"rack:{name}:3").status)
                said = service.ask("POST", f"/v1/documents/rack:{name}:3/resolve", {"state": "issued", "documentNumber": 5})
                self.assertEqual("issued", said.body.get("state"), said)
                self.assertEqual(("needsReview", 4), (self.register(name)["waiting"], len(self.registers[name].receipts())))
                service.ask("POST", f"/v1/registers/{name}/accept", {"note": "5 is ours, and so is 6"})
        self.sell(5)
        self.sell(3)
        self.sell(6)
        self.assertEqual([6, 6], [len(register.receipts()) for register in self.registers.values()])


if __name__ == "__main__":
    unittest.main()
