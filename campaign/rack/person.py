"""Who looks at a register's tape, and says what has become of a document of which the service cannot know."""

from registers import kopecks
from verdict import CLOSING, NUMBERED, RECEIPT

OPENING = 2
TYPES = {"sell": RECEIPT, "sellReturn": RECEIPT, "zReport": CLOSING, "openShift": OPENING}


class Person:
    def __init__(self, service, ledger, registers):
        """registers by name: those that are no fence, since no other one leaves a case."""
        self._service = service
        self._ledger = ledger
        self._registers = registers
        self.cases = 0

    def look(self):
        """What the service would not take."""
        wrong = []
        for document in self._service.documents("&state=unknown"):
            if document["register"] in self._registers and document["kind"] in NUMBERED:
                self.cases += 1
                said = self._said(document)
                answer = self._service.ask("POST", f"/v1/documents/{document['id']}/resolve", said)
                if answer is None or answer.status != 200:
                    wrong.append(f"{document['id']} could not be resolved as {said}: {answer and answer.body}")
        return wrong

    def _said(self, document):
        if number := self._number(document):
            return {"state": "issued", "documentNumber": number}
        return {"state": "notIssued", "note": "not on the tape"}

    def _number(self, document):
        """A receipt is known by its sum, which no other one has; a report by its number, which no other one claims."""
        claimed = {one["documentNumber"] for one in self._service.documents(f"&register={document['register']}")}
        order = self._ledger.orders.get(document["id"])
        for made in self._registers[document["register"]].documents():
            if made["type"] != TYPES[document["kind"]] or made["number"] in claimed:
                continue
            if made["type"] != RECEIPT or (order and kopecks(made["total"]) == order.total):
                return made["number"]
        return None
