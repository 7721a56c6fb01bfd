"""Clients as there are: patient, hasty, doubled, gone, of a second thought. All keep to the client's rule."""

import threading
import time

from ledger import Told

# A client stays no longer than this at one document; another one may come back to it.
STAY = 40
ATTEMPTS = 4
NEVER = ("expired", "deleted")


class Clients:
    def __init__(self, service, ledger, orders, make_random, registers):
        self.service = service
        self.ledger = ledger
        self.orders = iter(orders)
        self.make_random = make_random
        self.registers = registers
        self.lock = threading.Lock()
        self.posts = 0
        self.given_up = 0
        self.done = 0
        self.is_ended = False
        self.errors = []
        self.unexpected = []

    def start(self, count):
        threads = [threading.Thread(target=self._run, daemon=True) for _ in range(count)]
        for thread in threads:
            thread.start()
        return threads

    def _run(self):
        while not self.is_ended:
            with self.lock:
                order = next(self.orders, None)
            if order is None:
                return
            self.ledger.note_order(order)
            try:
                getattr(self, order.manner)(order, self.make_random(order.id))
            except Exception as error:  # pylint: disable=broad-except
                self.errors.append(f"{order.id}: {error!r}")
            with self.lock:
                self.done += 1

    def patient(self, order, random):
        """Asks until it knows, after any failure, and tries what was not issued again."""
        end = time.monotonic() + random.uniform(10, STAY)
        attempts = 0
        while time.monotonic() < end and not self.is_ended:
            answer = self._post(order, wait=random.choice((2, 5, 15)))
            if answer is None or answer.status >= 429:
                time.sleep(random.uniform(0.1, 1))
            elif answer.state == "issued":
                return
            elif answer.state == "notIssued":
                attempts += 1
                if answer.reason in NEVER or attempts == ATTEMPTS:
                    return
                time.sleep(random.uniform(0.1, 1))
            elif answer.state == "unknown":
                time.sleep(random.uniform(0.5, 3))
            elif answer.status != 202:
                self.unexpected.append(f"{order.id}: {answer.status} {answer.body}")
                return

    def hasty(self, order, random):
        """Gives up, and repeats with the same id."""
        for _ in range(random.randint(1, 3)):
            self._post(order, timeout=random.uniform(0.002, 0.3))
            time.sleep(random.choice((0, random.uniform(0, 2))))
        self.patient(order, random)

    def doubled(self, order, random):
        """Two at once."""
        twin = threading.Thread(target=self.patient, args=(order, self.make_random(order.id + "twin")), daemon=True)
        twin.start()
        self.patient(order, random)
        twin.join()

    def gone(self, order, random):
        """Posts once, does not wait, and never asks again."""
        self._post(order, timeout=random.uniform(0.005, 0.3))

    def withdrawing(self, order, random):
        self._post(order, wait=0)
        time.sleep(random.choice((0, random.uniform(0, 0.5))))
        self._ask("DELETE", order, f"/v1/documents/{order.id}")
        self._follow(order, random)

    def moving(self, order, random):
        self._post(order, wait=0)
        other = random.choice([name for name in self.registers if name != order.register])
        self._ask("POST", order, f"/v1/documents/{order.id}/move", {"register": other})
        self._follow(order, random)

    def _follow(self, order, random):
        """Asks how it stands, and posts nothing more."""
        end = time.monotonic() + STAY / 2
        while time.monotonic() < end and not self.is_ended:
            answer = self._ask("GET", order, f"/v1/documents/{order.id}")
            if answer and (answer.status == 404 or answer.state in ("issued", "notIssued")):
                return
            time.sleep(random.uniform(0.1, 1))

    def _post(self, order, wait=15, timeout=None):
        self.posts += 1
        answer = self._ask("POST", order, f"/v1/{order.place}/documents", order.body,
                           timeout=timeout or wait + 20, Prefer=f"wait={wait}")
        self.given_up += answer is None and timeout is not None
        return answer

    def _ask(self, method, order, path, body=None, timeout=30.0, **headers):
        sent = time.time()
        answer = self.service.ask(method, path, body, timeout, **headers)
        known = answer.body if answer else {}
        self.ledger.note(Told(
            order.id, method == "POST", sent, time.time(), answer and answer.status, known.get("state"),
            known.get("reason"), known.get("documentNumber"), known.get("drive"), known.get("settled")))
        return answer
