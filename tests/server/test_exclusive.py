#!/usr/bin/python3
"""What frctl detect finds out about a second connection, and what the service makes of the section that it prints."""

import json
import os
import socket
import subprocess
import tempfile
import threading
import unittest

from service import PATIENCE, Register


class Converter:
    """Stands between a network and a register's only line, with a manner of its own towards former connections. None of
    them is closed."""

    def __init__(self, register, manner):
        self.manner = manner
        self.hosts = []
        self.kept = b""
        self.lock = threading.Lock()
        _, host, port = register.line.split(":")
        self.line = socket.create_connection((host, int(port)))
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.address = f"tcp:127.0.0.1:{self.listener.getsockname()[1]}"
        for work in (self.accept, self.answer):
            threading.Thread(target=work, daemon=True).start()

    def accept(self):
        try:
            while True:
                host, _ = self.listener.accept()
                with self.lock:
                    self.hosts.append(host)
                threading.Thread(target=self.hear, args=(host,), daemon=True).start()
        except OSError:
            pass

    def hear(self, host):
        while asked := host.recv(4096):
            with self.lock:
                if host is self.hosts[-1] or self.manner == "answers the last":
                    self.line.sendall(asked)
                elif self.manner == "hears the former later":
                    self.kept += asked
        with self.lock, host:
            self.hosts.remove(host)
            self.line.sendall(self.kept)
            self.kept = b""

    def answer(self):
        while answered := self.line.recv(4096):
            with self.lock:
                if self.hosts:
                    self.hosts[-1].sendall(answered)

    def close(self):
        for one in (self.listener, self.line):
            one.shutdown(socket.SHUT_RDWR)
            one.close()


class Exclusive(unittest.TestCase):
    def register(self, *options):
        register = Register(*options)
        self.addCleanup(register.stop)
        return register

    def converter(self, manner):
        converter = Converter(self.register(), manner)
        self.addCleanup(converter.close)
        return converter.address

    def detect(self, address, protocol):
        done = subprocess.run(
            [os.environ["FRCTL"], "--plugin", os.environ["FRSPF_PLUGIN"], "--protocol", protocol, "--json", "detect", address],
            capture_output=True, text=True, check=False, timeout=PATIENCE)
        self.assertEqual(0, done.returncode, done.stderr)
        return json.loads(done.stdout)["ports"][0]

    def test_what_the_former_connection_is_good_for(self):
        rules = ("last", "first", "both")
        registers = {rule: self.register("--tcp-connections", rule) for rule in rules}
        self.assertEqual(list(rules), [one.ask("GET", "/state")["tcpConnections"] for one in registers.values()])
        places = [(registers["last"].line, True), (registers["first"].line, False), (registers["both"].line, False),
                  (self.converter("is deaf to the former"), True), (self.converter("hears the former later"), False),
                  (self.converter("answers the last"), False)]
        cases = [(address, protocol, expected) for protocol in ("HEX", "XML") for address, expected in places[:3]]
        cases += [(address, "HEX", expected) for address, expected in places[3:]]
        before = [one.ask("GET", "/state")["shift"] for one in registers.values()]
        for address, protocol, expected in cases:
            with self.subTest(address=address, protocol=protocol):
                port = self.detect(address, protocol)
                self.assertIs(expected, port["exclusive"])
                self.check_section(port["serviceSection"], "yes" if expected else "no")
        self.assertEqual(before, [one.ask("GET", "/state")["shift"] for one in registers.values()])

    def check_section(self, section, word):
        self.assertIn(f"\nexclusive = {word}\n", section)
        with tempfile.NamedTemporaryFile("w", suffix=".ini", encoding="utf-8") as file:
            file.write(f"[service]\nplugin = {os.environ['FRSPF_PLUGIN']}\n{section}\n")
            file.flush()
            done = subprocess.run([os.environ["FRSERVER"], "--config", file.name, "check-config"],
                                  capture_output=True, text=True, check=False, timeout=PATIENCE)
        self.assertEqual(0, done.returncode, done.stderr)


if __name__ == "__main__":
    unittest.main()
