#!/usr/bin/python3
"""A register that two services have in their configuration: whose it is, and what a former owner can still do."""

import json
import os
import signal
import subprocess
import sys
import unittest
import uuid
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
# pylint: disable=wrong-import-position
from service import CASHIER, PATIENCE, Register  # noqa: E402
from servicetest import SALE, TOTAL  # noqa: E402
from sharedstore import SharedStoreTest  # noqa: E402

DOCUMENT = "rack:till1:1"
# An id, a start and locks of its own: what another machine has, as far as the service can tell.
MACHINE = ["unshare", "--mount", "sh", "-c", 'mount --bind "$0/machine-id" /etc/machine-id && '
           'mount --bind "$0/boot-id" /proc/sys/kernel/random/boot_id && mount --bind "$0/hosts" /etc/hosts && '
           'mount -t tmpfs none /run/lock && exec "$@"']


class OwnerTest(SharedStoreTest):
    """Two services with one register, each a process group of its own with its worker."""

    EXCLUSIVE = "yes"

    def setUp(self):
        super().setUp()
        self.register = self.add_register("till1")
        self.one, self.two = (self.prepare(name) for name in ("one", "two"))
        self.migrate(self.one)

    def prepare(self, name):
        service = self.serve_registers(name, {"till1": self.register.line})
        service.edit("[store]\n", "[store]\nlease = 3\n")
        service.edit("exclusive = yes", f"exclusive = {self.EXCLUSIVE}")
        return service

    def put_elsewhere(self, service):
        """On a machine of its own."""
        for name in ("machine-id", "boot-id"):
            (service.folder / name).write_text(f"{uuid.uuid4().hex}\n", encoding="ascii")
        (service.folder / "hosts").write_text("127.0.0.1 localhost till1.shop\n", encoding="ascii")
        service.through = [*MACHINE, str(service.folder)]
        if subprocess.run([*service.through, "true"], check=False, capture_output=True).returncode != 0:
            self.skipTest("no process may see a machine of its own here")

    def start_one(self, through=()):
        self.one.through = through
        self.start(self.one, start_new_session=True)
        # One that still stands does not end.
        self.addCleanup(lambda: self.one.process.send_signal(signal.SIGCONT))
        self.until(self.one, "ready")
        self.assert_issued(self.one.post({"type": "openShift"}, id="rack:till1:0"))

    def start_two(self, state="standby"):
        self.start(self.two)
        self.until(self.two, state)

    @staticmethod
    def till(service):
        return service.ask("GET", "/v1/registers/till1").body

    def until(self, service, state):
        def told():
            till = self.till(service)
            return till["state"], (till["owner"] or {}).get("process")

        if state == "standby":
            # It shows what the owner tells, or that it knows of one.
            return self.becomes(lambda: told()[1] not in (None, service.process.pid), True)
        # Its own word: what a former owner has told last may be the same.
        return self.becomes(told, (state, service.process.pid))

    def signal_one(self, which):
        """The service and all that it has started."""
        os.killpg(self.one.process.pid, which)

    def frctl_there(self, line, *command):
        """On the second machine."""
        return subprocess.run(
            [*self.two.through, os.environ["FRCTL"], "--json", "--plugin", os.environ["FRSPF_PLUGIN"], "--port", line, "--protocol",
             "HEX", *command],
            env={**os.environ, "FRSPF_JOURNAL": self.database.url}, capture_output=True, text=True, check=False, timeout=PATIENCE)

    def assert_busy_there(self, line, *command):
        refused = self.frctl_there(line, *(command or ("--cashier", CASHIER, "x-report")))
        self.assertEqual((1, "busy"), (refused.returncode, json.loads(refused.stdout)["error"]["kind"]), refused)
        self.assertIn("as till1", refused.stderr)

    def freeze_one_before(self, command):
        """In the middle of the document: the register has not got that command, and would get it again."""
        with self.register.meets(command, "silence"):
            self.assertEqual(202, self.one.post(SALE, id=DOCUMENT, wait=0).status)
        self.signal_one(signal.SIGSTOP)
        self.register.ask("PUT", "/faults", {"rules": []})

    def let_one_go_on(self):
        self.signal_one(signal.SIGCONT)
        self.until(self.one, "standby")

    def sell_again(self):
        """By the same id."""
        self.assert_issued(self.two.post(SALE, id=DOCUMENT))
        self.assertEqual([TOTAL], self.register.receipts())


class OneMachine(OwnerTest):
    def take_over_before(self, command):
        self.start_one()
        self.start_two()
        self.assertEqual(self.one.process.pid, self.till(self.two)["owner"]["process"])
        former, = self.one.workers()
        self.freeze_one_before(command)
        self.until(self.two, "ready")
        self.assertEqual("Z", Path(f"/proc/{former}/stat").read_text(encoding="ascii").rpartition(")")[2].split()[0])
        self.assertEqual("notIssued", self.two.ask("GET", f"/v1/documents/{DOCUMENT}")["state"])
        self.let_one_go_on()
        self.assertEqual([], self.register.receipts())
        self.sell_again()

    def test_a_frozen_owner_has_ended_before_the_next_one_opens_the_line(self):
        self.take_over_before("OpenDocument")

    def test_the_same_at_the_end_of_a_document(self):
        self.take_over_before("FinishDocument")

    def test_a_register_that_is_left_is_taken_at_once(self):
        self.one.edit("lease = 3", "lease = 600")
        self.start_one()
        self.start_two()
        self.one.stop()
        self.until(self.two, "ready")
        self.one.start()
        self.until(self.one, "standby")
        # One that was killed on this machine is known to be gone.
        self.two.stop(signal.SIGKILL)
        self.until(self.one, "ready")
        self.two.start()
        self.until(self.two, "standby")


class KeptConnection(OwnerTest):
    """Of one machine, over TCP, where the network may have the end of a receipt still whose sender was killed."""

    EXCLUSIVE = "no"

    def test_what_a_killed_owner_may_have_sent_is_unknown(self):
        self.start_one()
        self.start_two()
        self.freeze_one_before("FinishDocument")
        self.until(self.two, "ready")
        self.assertEqual("unknown", self.two.post(SALE, id=DOCUMENT)["state"])
        self.let_one_go_on()
        self.assertEqual([], self.register.receipts())


    def test_what_a_killed_frctl_may_have_sent_is_unknown(self):
        def frctl(exclusive, *command):
            return [os.environ["FRCTL"], "--json", "--plugin", os.environ["FRSPF_PLUGIN"], "--port", self.register.line, "--protocol", "HEX",
                    "--exclusive", exclusive, "--cashier", CASHIER, "--journal", self.database.url, *command]

        sale = self.folder / "sale.json"
        sale.write_text(json.dumps(SALE), encoding="utf-8")
        subprocess.run(frctl("no", "open-shift"), check=True, capture_output=True, timeout=PATIENCE)
        for exclusive, state in (("no", "unknown"), ("yes", "notIssued")):
            with self.subTest(exclusive=exclusive):
                name = f"till:killed:{exclusive}"
                with self.register.meets("FinishDocument", "silence"):
                    program = subprocess.Popen(frctl(exclusive, "--id", name, "sell", sale), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                    self.addCleanup(program.kill)
                program.kill()
                program.wait(PATIENCE)
                self.register.ask("PUT", "/faults", {"rules": []})
                subprocess.run(frctl(exclusive, "journal", "settle", name), check=False, capture_output=True, timeout=PATIENCE)
                self.assertEqual(state, json.loads(self.frctl("journal", "show", name).stdout)["state"])
        self.assertEqual([], self.register.receipts())


class OtherMachine(OwnerTest):
    """Over TCP, with a register that is not known to drop the former connection."""

    EXCLUSIVE = "no"

    def setUp(self):
        super().setUp()
        self.put_elsewhere(self.two)

    def take_over_from_frozen(self, state):
        """And what the sale that it was at is told to be."""
        self.start_one()
        self.start_two()
        self.freeze_one_before("FinishDocument")
        self.until(self.two, "ready")
        self.assertEqual(state, self.two.ask("GET", f"/v1/documents/{DOCUMENT}")["state"])

    def test_what_a_frozen_owner_may_still_send_is_unknown(self):
        self.take_over_from_frozen("unknown")
        # It is nobody else's to sell, and nothing else waits for it.
        self.assertEqual("unknown", self.two.post(SALE, id=DOCUMENT)["state"])
        self.assert_issued(self.two.post({"type": "xReport"}, id="rack:till1:2"))
        self.let_one_go_on()
        self.assertEqual([], self.register.receipts())
        # Its worker was killed, and nothing of it is on its way after so long: the register may be believed.
        self.becomes(lambda: self.database.ask("SELECT 1 FROM frspf.workers WHERE killed IS NOT NULL") != [], True)
        self.assertEqual("unknown", self.two.post(SALE, id=DOCUMENT)["state"])
        self.database.execute("UPDATE frspf.workers SET killed = now() - interval '1 hour' WHERE killed IS NOT NULL")
        self.becomes(lambda: self.two.post(SALE, id=DOCUMENT)["state"], "issued")
        self.assertEqual([TOTAL], self.register.receipts())


class DroppedConnection(OtherMachine):
    """The register is known to drop it."""

    EXCLUSIVE = "yes"

    def test_what_a_frozen_owner_may_still_send_is_unknown(self):
        self.take_over_from_frozen("notIssued")
        self.let_one_go_on()
        self.assertEqual([], self.register.receipts())
        self.sell_again()


class BesideAService(OwnerTest):
    """frctl on another machine, at a register that drops the former connection."""

    def setUp(self):
        super().setUp()
        self.put_elsewhere(self.one)
        self.put_elsewhere(self.two)
        self.told = self.register.line.replace("127.0.0.1", "till1.shop")
        self.one.edit(self.register.line, self.told)

    def add_register(self, name, *options):
        """One that is the same after a restart."""
        register = self.registers[name] = Register("--state", str(self.folder / "state"), *options)
        self.addCleanup(register.stop)
        return register

    def test_it_is_kept_from_the_register(self):
        self.start_one(self.one.through)
        self.assert_busy_there(self.told)
        self.assertIn("as till1", self.frctl_there(self.told, "detect", self.told).stdout)
        self.assertIn("as till1", self.frctl_there(self.told, "doctor").stdout)
        self.assert_issued(self.one.post(SALE, id="rack:till1:1"))
        self.assertEqual(1, self.till(self.one)["connections"], "the line was not touched")
        # By an address that nobody knows it takes the line away, and gets the register all the same not.
        for command in (("--cashier", CASHIER, "x-report"), ("journal", "settle"), ("cancel",), ("status",)):
            with self.subTest(command=command):
                self.assert_busy_there(self.register.line, *command)
        self.assert_issued(self.one.post(SALE, id="rack:till1:2"))
        self.register.stop()
        self.one.post({"type": "xReport"}, id="rack:till1:3", wait=0)
        self.becomes(lambda: self.till(self.one)["waiting"], "line")
        # What has cut the line for so long may have been that program.
        self.add_register("till1", "--tcp", self.register.line.rpartition(":")[2])
        self.assert_busy_there(self.register.line)
        self.assertEqual(200, self.one.ask("POST", "/v1/registers/till1/pause", {}, Prefer="wait=30").status)
        paused = self.frctl_there(self.told, "--cashier", CASHIER, "x-report")
        self.assertEqual(0, paused.returncode, paused)


class TwoNames(OwnerTest):
    """One register over TCP, which two machines call by names of their own."""

    EXCLUSIVE = "no"

    def setUp(self):
        super().setUp()
        self.two.edit("[register till1]", "[register kassa9]")
        self.put_elsewhere(self.one)
        self.put_elsewhere(self.two)
        self.told = self.register.line.replace("127.0.0.1", "till1.shop")
        self.one.edit(self.register.line, self.told)

    def taken(self):
        """What the second machine says of its register."""
        told = self.two.ask("GET", "/v1/registers/kassa9").body
        return told["state"], told["waiting"], (told["waitingText"] or "").endswith("as till1: go through that service, or stop it")

    def test_one_of_them_works_it(self):
        self.two.edit(self.register.line, self.told)
        self.start_one(self.one.through)
        self.start(self.two)
        self.becomes(self.taken, ("waiting", "busy", True))
        self.two.ask("POST", "/v1/registers/kassa9/pause", {}, Prefer="wait=30")
        self.two.ask("POST", "/v1/registers/kassa9/resume", {})
        self.becomes(self.taken, ("waiting", "busy", True))
        self.assert_issued(self.one.post(SALE, id="rack:till1:2"))
        # The register drops a connection when a new one comes.
        self.assertEqual(1, self.till(self.one)["connections"], "the line was not touched")
        self.assertEqual(202, self.two.post(SALE, "kassa9", id=DOCUMENT, wait=0).status)
        # Its line is free when it is paused, and another one's when it is resumed.
        self.one.ask("POST", "/v1/registers/till1/pause", {})
        self.becomes(lambda: self.two.ask("GET", f"/v1/documents/{DOCUMENT}")["state"], "issued")
        self.one.ask("POST", "/v1/registers/till1/resume", {})
        self.becomes(lambda: self.till(self.one)["waiting"], "busy")
        self.two.ask("POST", "/v1/registers/kassa9/pause", {})
        self.until(self.one, "ready")
        self.assertEqual([TOTAL, TOTAL], self.register.receipts())

    def test_what_a_frozen_owner_may_still_send_is_unknown(self):
        self.start_one(self.one.through)
        self.start(self.two)
        self.becomes(self.taken, ("waiting", "busy", True))
        # By another name of the host it has cut the line of the first one, which may lose the register by it.
        self.two.ask("POST", "/v1/registers/kassa9/pause", {}, Prefer="wait=30")
        self.freeze_one_before("FinishDocument")
        self.two.ask("POST", "/v1/registers/kassa9/resume", {})
        self.becomes(lambda: self.two.ask("GET", f"/v1/documents/{DOCUMENT}")["state"], "unknown")
        self.signal_one(signal.SIGCONT)
        self.becomes(lambda: self.till(self.one)["waiting"], "busy")
        self.assertEqual([], self.register.receipts())


if __name__ == "__main__":
    unittest.main()
