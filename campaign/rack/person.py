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
        """A receipt is known by its sum, which no other one has; a report by there being one more than the journal has."""
        kind, name = TYPES[document["kind"]], document["register"]
        made = [one for one in self._registers[name].documents() if one["type"] == kind]
        if kind == RECEIPT:
            order = self._ledger.orders[document["id"]]
            return next((one["number"] for one in made if kopecks(one["total"]) == order.total), None)
        known = [one["documentNumber"] for one in self._service.documents(f"&register={name}&state=issued")
                 if one["kind"] == document["kind"]]
        more = [one["number"] for one in made if one["number"] not in known]
        return more[-1] if len(made) > len(known) else None
