#!/usr/bin/python3
"""Two registers that share what is posted to their pool."""

import signal
import unittest

from service import PATIENCE, at_once
from servicetest import SALE
from sharedstore import SharedStoreTest

ELECTRONIC = {**SALE, "electronically": True, "clientInfo": {"emailOrPhone": "buyer@example.com"}}
PLACE = "/v1/pools/webshop/documents"


class Pool(SharedStoreTest):
    def setUp(self):
        super().setUp()
        self.lines = {name: self.add_register(name).line for name in ("till1", "till2")}

    def start_pool(self, service, names, keys=""):
        with service.config.open("a", encoding="utf-8") as file:
            file.write(f"{keys}\n[pool webshop]\nregisters = {', '.join(names)}\ntax-systems = osn\n")
        self.start(service)

    @staticmethod
    def post(service, name, body=None, wait=PATIENCE - 15):
        return service.ask("POST", PLACE, {**(body or SALE), "id": name}, Prefer=f"wait={wait}")

    def sold(self):
        """By which register: how often each total is on paper or in its drive."""
        return {name: len(register.receipts()) for name, register in self.registers.items()}

    def test_one_goes_on_when_the_other_has_no_paper(self):
        service = self.configured("service", self.lines)
        # The section that is open in the file is that of till2.
        self.start_pool(service, self.lines, "paperless = yes")
        for name in ("till1", "till2"):
            self.assertEqual(201, service.post(SALE, name, id=f"shop:{name}").status)
        self.registers["till2"].ask("PUT", "/paper", {"state": "out"})
        answers = at_once(lambda one=one: self.post(service, f"shop:paper:{one}") for one in range(6))
        self.assertEqual([(201, "issued", "till1")] * 6,
                         [(answer.status, answer["state"], answer["register"]) for answer in answers], answers)
        self.assertEqual({"till1": 7, "till2": 1}, self.sold())
        # Which till2 has tried, and told.
        self.assertEqual("paper", service.ask("GET", "/v1/registers/till2")["waiting"])
        # It needs none for what nobody prints, while the other one is away.
        self.assertEqual(200, service.ask("POST", "/v1/registers/till1/pause", {}).status)
        electronic = self.post(service, "shop:electronic", ELECTRONIC)
        self.assertEqual((201, "till2"), (electronic.status, electronic["register"]), electronic)
        self.assertEqual("paper", service.ask("GET", "/v1/registers/till2")["waiting"])
        # Nobody has it then, and a person can do with it what can be done.
        waiting = self.post(service, "shop:waiting", wait=0)
        self.assertEqual((202, None), (waiting.status, waiting["register"]), waiting)
        self.registers["till2"].ask("PUT", "/paper", {"state": "in"})
        self.assertEqual((201, "till2"), (self.post(service, "shop:waiting").status,
                                          service.ask("GET", "/v1/documents/shop:waiting")["register"]))
        self.assertEqual({"till1": 7, "till2": 3}, self.sold())

    def test_pool_of_two_machines(self):
        one, two = (self.serve_registers(name, {name: line}) for name, line in self.lines.items())
        self.migrate(one)
        for name, service in self.services.items():
            self.start_pool(service, [name])
            self.until(service, name, state="ready")
        # Any machine takes a document, and any machine's register makes it.
        self.assertEqual(200, one.ask("POST", "/v1/registers/till1/pause", {}).status)
        names = [f"shop:rack:{number}" for number in range(6)]
        for name in names:
            self.assertEqual(202, self.post(one, name, wait=0).status)
        # Whoever waits at the one for what the other one makes is answered.
        for name in names:
            self.assertEqual("till2", self.post(one, name)["register"])
        two.stop(signal.SIGKILL)
        self.assertEqual(202, self.post(one, "shop:rack:last", wait=0).status)
        self.assertEqual(200, one.ask("POST", "/v1/registers/till1/resume", {}).status)
        self.assertEqual("till1", self.post(one, "shop:rack:last")["register"])
        self.assertEqual({"till1": 1, "till2": 6}, self.sold())


if __name__ == "__main__":
    unittest.main()
