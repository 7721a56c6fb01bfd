#!/usr/bin/python3
"""Services of many machines over one database."""

import json
import os
import signal
import unittest

from service import ROOT, receipt
from servicetest import SALE
from sharedstore import SharedStoreTest


class Store(SharedStoreTest):
    def test_any_service_answers_for_any_document(self):
        one, two = self.serve("till1"), self.serve("till2")
        # Neither starts, nor takes the place of one that runs.
        for words in ((), ("check-config",)):
            refused = one.command(*words)
            self.assertEqual(1, refused.returncode)
            self.assertIn("frserver migrate", refused.stderr)
        migrated = self.migrate(one)
        checked = one.command("check-config")
        self.assertIn("journal postgresql://postgres@", checked.stdout)
        self.start(one)
        self.start(two)
        sold = one.post(SALE, "till1", id="rack:till1:1")
        self.assertEqual(201, sold.status, sold)
        self.assertEqual("issued", two.ask("GET", "/v1/documents/rack:till1:1")["state"])
        # The same id at another machine is the same document.
        again = two.post(SALE, "till2", id="rack:till1:1")
        self.assertEqual((200, True), (again.status, again["replayed"]))
        other = two.post(receipt("advance"), "till2", id="rack:till1:1")
        self.assertEqual(422, other.status)
        self.assertEqual(201, two.post(SALE, "till2", id="rack:till2:1").status)
        self.assertEqual([1, 1], [len(register.receipts()) for register in self.registers.values()])
        shown = self.frctl("journal", "show", "rack:till1:1")
        self.assertEqual("issued", json.loads(shown.stdout)["state"], shown)
        # What only a file can is said so, and nobody is told the password.
        refused = one.command("export", str(self.folder / "copy"))
        self.assertEqual(1, refused.returncode)
        self.assertIn("kept by PostgreSQL", refused.stderr)
        for text in (migrated.stderr, checked.stdout, refused.stderr, self.frctl("journal", "check").stdout):
            self.assertNotIn("secret", text)
        # One whose month was archived.
        self.database.execute("DELETE FROM frspf.documents WHERE id = 'rack:till1:1'")
        self.assertEqual(410, two.ask("GET", "/v1/documents/rack:till1:1").status)
        for words in (("journal", "show", "rack:till1:1"),
                      ("--port", f"service://{one.url.removeprefix('http://')}/till1", "--id", "rack:till1:1", "sell",
                       str(ROOT / "examples/sale.json"))):
            gone = self.frctl(*words)
            self.assertIn("archive", gone.stdout, gone)

    def told(self, service):
        """Register by register, what does not change by itself."""
        listed = service.ask("GET", "/v1/registers")["registers"]
        return [(one["name"], one["state"], one["waiting"], one["queue"], one["service"], one["identity"]) for one in listed]

    def test_any_service_answers_for_any_register(self):
        one, two = self.serve("till1"), self.serve("till2")
        self.migrate(one)
        self.start(one)
        self.start(two)
        self.until(two, "till1", state="ready")
        # Sold at one for the register of the other, as fast as there.
        with two.client.events() as events:
            sold = two.post(SALE, "till1", id="rack:sale:1")
            self.assertEqual((201, "issued"), (sold.status, sold.body.get("state")), sold)
            events.until("document", id="rack:sale:1", state="issued", register="till1")
        with one.client.events() as events:
            paused = two.ask("POST", "/v1/registers/till1/pause", {"by": "Anna"}, Prefer="wait=30")
            self.assertEqual((200, "paused", "Anna"), (paused.status, paused["state"], paused["pausedBy"]))
            self.assertEqual(202, two.post(SALE, "till1", wait=0, id="rack:sale:2").status)
            events.until("document", id="rack:sale:2", state="queued")
        self.assertEqual(202, two.ask("POST", "/v1/registers/till1/accept", {"note": "seen"}).status)
        self.assertEqual("paused", one.ask("GET", "/v1/documents/rack:sale:2")["waiting"])
        self.assertEqual(202, two.ask("POST", "/v1/registers/till1/resume", {}).status)
        self.assertEqual("issued", two.post(SALE, "till1", id="rack:sale:2")["state"])
        self.assertEqual("issued", two.ask("POST", "/v1/registers/till1/documents", {"id": "rack:x-report", "type": "xReport"},
                                           Prefer="wait=30")["state"])
        # Lists and metrics are the same at both.
        for service in (one, two):
            self.until(service, "till1", state="ready")
        self.becomes(lambda: self.told(one), self.told(two))
        ids = [[document["id"] for document in service.ask("GET", "/v1/documents")["documents"]] for service in (one, two)]
        self.assertEqual(ids[0], ids[1])
        series = [sorted(line.rsplit(" ", 1)[0] for line in service.ask("GET", "/metrics").body.splitlines()
                         if "till1" in line and "documents_total" not in line) for service in (one, two)]
        self.assertEqual(series[0], series[1])
        # Killed in the middle of a receipt.
        with self.registers["till1"].meets():
            self.assertEqual(202, two.post(SALE, "till1", wait=0, id="rack:sale:3").status)
        for worker in one.workers():
            os.kill(worker, signal.SIGKILL)
        one.stop(signal.SIGKILL)
        self.database.execute("UPDATE frspf.services SET seen = seen - interval '1 minute' "
                              "WHERE id IN (SELECT service FROM frspf.registers WHERE name = 'till1')")
        self.until(two, "till1", state="unreachable")
        # Its owner was killed before it told of the beginning: that is found with the next look at all that is open.
        self.becomes(lambda: two.ask("GET", "/v1/registers/till1")["queue"]["running"], 1)
        # Nobody sells it elsewhere; the same id waits, and the register tells when it is back.
        waits = two.post(SALE, "till2", wait=0, id="rack:sale:3")
        self.assertEqual((202, "running", "unreachable"), (waits.status, waits["state"], waits["waiting"]))
        self.assertEqual(409, two.ask("POST", "/v1/documents/rack:sale:3/move", {"register": "till2"}).status)
        one.start()
        self.until(two, "till1", state="ready")
        settled = two.post(SALE, "till1", id="rack:sale:3")
        self.assertEqual("issued", settled["state"], settled)
        self.assertEqual(3, len(self.registers["till1"].receipts()))
        token = two.command("token", "add", "shop", "--role", "sell", "--registers", "till1")
        self.assertEqual(0, token.returncode, token.stderr)

    def test_service_without_a_register_answers_for_those_of_others(self):
        front, one = self.serve_registers("front", {}), self.serve("till1")
        self.migrate(front)
        for service in front, one:
            names = "" if service is front else "registers = till1\n"
            with service.config.open("a", encoding="utf-8") as config:
                config.write(f"\n[pool webshop]\ntax-systems = osn\n{names}")
        self.assertIn("no register of its own", front.command("check-config").stdout)
        self.start(front)
        ready = front.ask("GET", "/readyz")
        self.assertEqual((200, {}), (ready.status, ready["registers"]), ready)
        self.assertEqual(404, front.post(SALE, "till1", id="rack:front:0").status)
        self.start(one)
        self.assert_issued(front.post(SALE, "till1", id="rack:front:1"))
        pooled = front.ask("POST", "/v1/pools/webshop/documents", {**SALE, "id": "rack:front:2"}, Prefer="wait=30")
        self.assert_issued(pooled)
        self.assertEqual("till1", pooled["register"])
        self.until(front, "till1", state="ready")
        self.assertEqual({"till1": "ready"}, front.ask("GET", "/readyz")["registers"])
        self.assertIn('frserver_register_state{register="till1",state="ready",waiting=""} 1', front.ask("GET", "/metrics").body)
        self.assertEqual(200, front.ask("GET", "/").status)
        # It has nobody to wait for.
        self.assertEqual(0, front.stop())

    def test_address_that_waiting_does_not_mend(self):
        self.database.execute("CREATE ROLE shop SUPERUSER LOGIN")
        service = self.serve("till1")
        right = self.database.url.replace("postgres:secret@", "shop@")
        service.edit(self.database.url, right)
        self.migrate(service)
        for wrong, words in ((f"{right}&sslmode=always", "sslmode"), (right.replace("shop@", "nobody@"), 'role "nobody"'),
                             (right.replace("/postgres?", "/nosuch?"), 'database "nosuch"')):
            service.edit(right, wrong)
            for refused in (*map(service.command, ("check-config", "migrate")), service.command(),
                            self.frctl("--journal", wrong, "journal", "list")):
                self.assertEqual(2, refused.returncode, refused)
                self.assertIn(words, refused.stderr)
            service.edit(wrong, right)
        # One that is at work waits for somebody to mend it.
        self.start(service)
        self.database.execute("ALTER ROLE shop NOLOGIN; "
                              "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE usename = 'shop'")
        self.assertEqual(503, service.post(SALE, id="rack:till1:1").status)
        self.database.execute("ALTER ROLE shop LOGIN")
        self.becomes(lambda: service.post(SALE, id="rack:till1:1").status, 201)

    def test_database_that_stands_still_is_one_that_is_gone(self):
        service = self.serve("till1")
        service.edit("[store]\n", "[store]\nlease = 3\n")
        self.migrate(service)
        self.start(service)
        self.assert_issued(service.post(SALE, id="rack:till1:1"))
        with self.registers["till1"].meets(mode="busy:3"):
            self.assertEqual(202, service.post(SALE, wait=0, id="rack:till1:2").status)
        with self.database.standing_still():
            for path, status in (("/healthz", 200), ("/readyz", 503), ("/v1/documents/rack:till1:2", 503)):
                self.assertEqual(status, service.ask("GET", path).status)
            self.assertEqual((503, "journal"), (lambda told: (told.status, told["type"]))(service.post(SALE, id="rack:till1:3")))
            # Behind its lease nobody is at the register.
            self.becomes(service.workers, [])
            self.assertEqual(200, service.ask("GET", "/healthz").status)
        self.becomes(lambda: service.post(SALE, id="rack:till1:3").status, 201)
        self.assertEqual("issued", service.post(SALE, id="rack:till1:2")["state"])
        # What cannot be written is not sold.
        self.database.stop()
        self.assertEqual(503, service.post(SALE, id="rack:till1:4").status)
        self.assertEqual(503, service.ask("GET", "/readyz").status)
        self.assertEqual(3, len(self.registers["till1"].receipts()))
        self.database.start()
        # As clients do: the same id again while it is 503.
        self.becomes(lambda: service.post(SALE, id="rack:till1:4").status, 201)
        self.assertEqual(200, service.post(SALE, id="rack:till1:1").status)
        self.assertEqual(200, service.ask("GET", "/readyz").status)
        self.assertEqual(4, len(self.registers["till1"].receipts()))


if __name__ == "__main__":
    unittest.main()
