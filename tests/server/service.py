"""A register, the service that owns it, and a client of the service: standard library alone."""

import contextlib
import http.client
import json
import os
import queue
import re
import signal
import subprocess
import threading
import urllib.parse
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PATIENCE = 60
CASHIER = "Иванова А. П."


class Program:
    """A program of ours that says on standard error where it can be reached."""

    def __init__(self, command, **options):
        self.lines = []
        self.news = queue.SimpleQueue()
        self.process = subprocess.Popen(
            command, stdin=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, encoding="utf-8", **options)
        self.reader = threading.Thread(target=self.read, daemon=True)
        self.reader.start()

    def read(self):
        """All the time: a program whose words nobody takes waits for that."""
        for line in self.process.stderr:
            self.news.put(line)
        self.news.put(None)

    def read_address(self, words):
        while line := self.news.get():
            self.lines.append(line)
            if match := re.search(words + r" (\S+)", line):
                return match[1]
        self.news.put(None)
        raise RuntimeError("".join(self.lines))

    def stop(self, how=signal.SIGTERM):
        if self.process.poll() is None:
            self.process.send_signal(how)
        status = self.process.wait(timeout=PATIENCE)
        if not self.process.stderr.closed:
            self.reader.join(PATIENCE)
            while line := self.news.get():
                self.lines.append(line)
            self.process.stderr.close()
        return status


class Answer:
    def __init__(self, response):
        self.status = response.status
        self.headers = response.headers
        text = response.read()
        self.body = json.loads(text) if "json" in response.headers.get("Content-Type", "") else text.decode()

    def __getitem__(self, name):
        return self.body[name]

    def __repr__(self):
        return f"{self.status} {self.body}"


class Client:
    def __init__(self, url):
        self.place = urllib.parse.urlsplit(url).netloc
        self.token = None

    def ask(self, method, path, body=None, **headers):
        with self.asked(method, path, body, headers) as response:
            return Answer(response)

    def bytes(self, method, path, body, accept):
        """For what may be no JSON: status, type and all of it."""
        with self.asked(method, path, body, {"Accept": accept}) as response:
            return response.status, response.headers["Content-Type"], response.read()

    @contextlib.contextmanager
    def asked(self, method, path, body, headers):
        connection = http.client.HTTPConnection(self.place, timeout=PATIENCE)
        headers = {name.replace("_", "-"): value for name, value in headers.items()}
        if self.token:
            headers["Authorization"] = "Bearer " + self.token
        if body is not None:
            body = json.dumps(body).encode()
        with contextlib.closing(connection):
            connection.request(method, path, body, headers)
            with connection.getresponse() as response:
                yield response

    def events(self):
        return Events(self.place, self.token)


class Events:
    """What the service tells as it happens, from now on."""

    def __init__(self, place, token=None):
        self.connection = http.client.HTTPConnection(place, timeout=PATIENCE)
        self.connection.request("GET", "/v1/events", headers={"Authorization": "Bearer " + token} if token else {})
        self.stream = self.connection.getresponse()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.connection.close()
        self.stream.close()

    def until(self, kind, **wanted):
        """The first such event."""
        name = None
        while line := self.stream.readline():
            field, _, value = line.decode().rstrip("\n").partition(": ")
            if field == "event":
                name = value
            elif field == "data" and name == kind:
                data = json.loads(value)
                if all(data.get(member) == one for member, one in wanted.items()):
                    return data
        raise AssertionError(f"no event {kind} {wanted}")


class Register(Program):
    """spf-emulator with its control interface."""

    def __init__(self, *options):
        super().__init__([os.environ["SPF_EMULATOR"], "--tcp", "0", "--panel", "0", "--quiet", *options])
        self.line = self.read_address("ready on")
        self.panel = Client(self.read_address("panel on"))

    def ask(self, method, path, body=None):
        return self.panel.ask(method, "/v1" + path, body).body

    @contextlib.contextmanager
    def meets(self, command="FinishDocument", mode="busy:3", **which):
        """What is done inside leads to that fault at that command; afterwards it is there."""
        self.ask("PUT", "/faults", {"rules": [{"mode": mode, "command": command, **(which or {"nth": 1})}]})
        begin = self.ask("GET", "/state")["lastEvent"]
        yield
        if not self.ask("GET", f"/wait?event=exchange&command={command}&timeout={PATIENCE - 15}&after={begin}"):
            raise AssertionError(f"no {command} came")

    def receipts(self):
        return [one["total"] for one in self.ask("GET", "/documents")["documents"] if one["word"] == "sell"]

    def tape(self):
        return self.ask("GET", "/tape.txt")


class Service(Program):
    """frserver with the registers that it is given, in a folder that it keeps from one start to the next."""

    # The program that starts it in its stead, with its arguments.
    through = ()

    def __init__(self, folder, registers, protocol="HEX", **environment):
        self.configure(folder, registers, protocol)
        self.start(environment)

    def configure(self, folder, registers, protocol="HEX"):
        self.folder = Path(folder)
        self.config = self.folder / "frserver.ini"
        sections = [
            f"[service]\nlisten = 127.0.0.1:0\njournal = {self.folder}/journal.sqlite\n"
            f"tokens = {self.folder}/tokens\nplugin = {os.environ['FRSPF_PLUGIN']}\n"
        ]
        for name, line in registers.items():
            sections.append(
                f"[register {name}]\nport = {line}\nprotocol = {protocol}\nexclusive = yes\ncashier = {CASHIER}\n"
                "allow-test-drive = true\n")
        self.config.write_text("\n".join(sections), encoding="utf-8")

    def edit(self, old, new):
        """In its configuration."""
        text = self.config.read_text(encoding="utf-8")
        assert old in text, text
        self.config.write_text(text.replace(old, new), encoding="utf-8")

    def start(self, environment=None, **options):
        super().__init__([*self.through, os.environ["FRSERVER"], "--config", str(self.config)],
                         env={**os.environ, **(environment or {})}, **options)
        self.url = self.read_address("ready on")
        self.client = Client(self.url)

    def ask(self, method, path, body=None, **headers):
        return self.client.ask(method, path, body, **headers)

    def bytes(self, *asked):
        return self.client.bytes(*asked)

    def post(self, body, name="till1", wait=PATIENCE - 15, **more):
        return self.ask("POST", f"/v1/registers/{name}/documents", {**body, **more}, Prefer=f"wait={wait}")

    def workers(self):
        """Process ids of its children."""
        task = f"/proc/{self.process.pid}/task/{self.process.pid}/children"
        return [int(one) for one in Path(task).read_text(encoding="ascii").split()]

    def command(self, *arguments):
        return subprocess.run([os.environ["FRSERVER"], "--config", str(self.config), *arguments],
                              capture_output=True, text=True, check=False, timeout=PATIENCE)


def at_once(works):
    """What each of them gives, as they come to their ends."""
    answers = []
    threads = [threading.Thread(target=lambda work=work: answers.append(work())) for work in works]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    return answers


def receipt(name="sale"):
    return json.loads((ROOT / "examples" / f"{name}.json").read_text(encoding="utf-8"))


def frctl(service, line, *arguments):
    return subprocess.run(
        [os.environ["FRCTL"], "--plugin", os.environ["FRSPF_PLUGIN"], "--port", line, "--protocol", "HEX", "--journal",
         str(service.folder / "journal.sqlite"), "--cashier", CASHIER, *arguments],
        capture_output=True, text=True, check=False, timeout=PATIENCE)
