"""frserver with the registers that it owns, as its clients reach it."""

import http.client
import json
import time

from programs import Program, children, free_port

READY = 60


class Answer:
    def __init__(self, status, body):
        self.status = status
        self.body = body if isinstance(body, dict) else {}

    @property
    def state(self):
        return self.body.get("state")

    @property
    def reason(self):
        return self.body.get("reason")


class Service:
    def __init__(self, frserver, plugin, folder, registers, store=None, more=None):
        """store is the address of a database that others share; without one there is a journal of its own. more has what else
        the configuration says, by section and key."""
        self.port = free_port()
        self.config = folder / "frserver.ini"
        sections = {"service": {"listen": f"127.0.0.1:{self.port}", "tokens": f"{folder}/tokens", "plugin": plugin}}
        if store:
            sections["store"] = {"url": store}
        else:
            sections["service"]["journal"] = f"{folder}/journal.sqlite"
        for section, keys in (more or {}).items():
            sections.setdefault(section, {}).update(keys)
        texts = [f"[{section}]\n" + "".join(f"{key} = {value}\n" for key, value in keys.items())
                 for section, keys in sections.items()]
        self.config.write_text("\n".join(texts + [register.section for register in registers]), encoding="utf-8")
        self.program = Program([frserver, "--config", self.config], folder / "frserver.log")

    def start(self):
        self.program.start()

    def wait(self):
        end = time.monotonic() + READY
        while time.monotonic() < end:
            if (answer := self.ask("GET", "/readyz", timeout=5)) and answer.status == 200:
                return
            time.sleep(0.05)
        raise RuntimeError("the service does not start")

    def workers(self):
        """Process ids of its children."""
        return children(self.program.process.pid)

    def ask(self, method, path, body=None, timeout=30.0, **headers):
        """None when no answer came in time, or none that is whole."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=timeout)
        data = None if body is None else json.dumps(body).encode()
        try:
            connection.request(method, path, data, {"Content-Type": "application/json", **headers})
            response = connection.getresponse()
            text = response.read()
            return Answer(response.status, json.loads(text) if text else None)
        except (OSError, http.client.HTTPException, ValueError):
            return None
        finally:
            connection.close()

    def documents(self, query=""):
        found, cursor = [], ""
        while True:
            answer = self.ask("GET", f"/v1/documents?limit=500{query}{cursor}")
            if answer is None or answer.status != 200:
                raise RuntimeError("the journal cannot be read")
            found += answer.body["documents"]
            if not answer.body["next"]:
                return found
            cursor = f"&cursor={answer.body['next']}"

    def registers(self):
        answer = self.ask("GET", "/v1/registers")
        return answer.body["registers"] if answer and answer.status == 200 else []
