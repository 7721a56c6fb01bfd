#!/usr/bin/python3
"""Services of many machines over one database."""

import json
import sys
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
# pylint: disable=wrong-import-position
from service import PATIENCE, receipt  # noqa: E402
from servicetest import SALE  # noqa: E402
from sharedstore import SharedStoreTest  # noqa: E402


class Store(SharedStoreTest):
    @staticmethod
    def post_as_told(service, name):
        """Any 5xx: the same id again."""
        deadline = time.monotonic() + PATIENCE
        while (answer := service.post(SALE, id=name)).status == 503 and time.monotonic() < deadline:
            pass
        return answer

    def test_any_service_answers_for_any_document(self):
        one, two = self.serve("till1"), self.serve("till2")
        refused = one.command()
        self.assertEqual(1, refused.returncode)
        self.assertIn("frserver migrate", refused.stderr)
        migrated = one.command("migrate")
        self.assertEqual(0, migrated.returncode, migrated.stderr)
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

    def test_what_cannot_be_written_is_not_sold(self):
        service = self.serve("till1")
        self.assertEqual(0, service.command("migrate").returncode)
        self.start(service)
        self.assertEqual(201, service.post(SALE, id="rack:till1:1").status)
        self.database.stop()
        refused = service.post(SALE, id="rack:till1:2")
        self.assertEqual(503, refused.status)
        self.assertEqual(503, service.ask("GET", "/readyz").status)
        self.assertEqual(1, len(self.registers["till1"].receipts()))
        self.database.start()
        self.assertEqual(201, self.post_as_told(service, "rack:till1:2").status)
        self.assertEqual(200, service.post(SALE, id="rack:till1:1").status)
        self.assertEqual(200, service.ask("GET", "/readyz").status)
        self.assertEqual(2, len(self.registers["till1"].receipts()))


if __name__ == "__main__":
    unittest.main()
