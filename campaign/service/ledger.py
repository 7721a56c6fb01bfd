"""What clients were told, which is all that they can believe."""

import dataclasses
import datetime
import threading


@dataclasses.dataclass(frozen=True)
class Order:
    """A document that somebody wants, as the seed has drawn it."""

    id: str
    kind: str
    total: int  # kopecks, nobody else's: the register's documents are told apart by it
    register: str
    manner: str
    start_before: float | None = None
    pool: str | None = None

    @property
    def place(self):
        """Where it is posted."""
        return f"pools/{self.pool}" if self.pool else f"registers/{self.register}"

    @property
    def body(self):
        body = {"type": self.kind, "id": self.id}
        if self.kind in ("sell", "sellReturn"):
            price = self.total / 100
            body |= {"taxationType": "osn", "payments": [{"type": "cash", "sum": price}], "items": [
                {"type": "position", "name": f"Товар {self.id}", "price": price, "quantity": 1, "amount": price,
                 "tax": {"type": "vat10"}}]}
        elif self.kind in ("cashIn", "cashOut"):
            body["sum"] = self.total / 100
        elif self.kind == "text":
            body["lines"] = [self.id]
        if self.start_before is not None:
            body["startBefore"] = self.start_before
        return body


@dataclasses.dataclass(frozen=True)
class Told:
    """One request for a document, from when to when (seconds since 1970), and its answer. Without a status there was
    none: the client has gone, or the service."""

    id: str
    is_post: bool
    sent: float
    ended: float
    status: int | None = None
    state: str | None = None
    reason: str | None = None
    number: int | None = None
    drive: str | None = None
    settled: str | None = None

    @property
    def is_known(self):
        """The service has told of the document: it must have it, for ever."""
        return self.state is not None


class Ledger:
    def __init__(self):
        self._lock = threading.Lock()
        self.orders = {}
        self.told = []

    def note_order(self, order):
        with self._lock:
            self.orders[order.id] = order

    def note(self, told):
        with self._lock:
            self.told.append(told)

    def by_document(self):
        found = {one: [] for one in self.orders}
        for told in self.told:
            found[told.id].append(told)
        return found


def seconds(moment):
    """Since 1970, of a moment as the service or a register writes it; a register's clock is this machine's."""
    return datetime.datetime.fromisoformat(moment.replace("Z", "+00:00")).timestamp()


def latest_arrival(told, lateness):
    """When the service has had the request at the latest: one that was given up may have come so much later."""
    return told.ended + (0 if told.status is not None else lateness)


def is_firm(belief, others, lateness):
    """notIssued is the last word when no other request for the document can have come behind it."""
    def is_before(other):
        return latest_arrival(other, lateness) <= belief.sent
    return all(not other.is_post or other is belief or is_before(other) for other in others)
