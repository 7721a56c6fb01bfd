#!/usr/bin/python3
"""Measures spf-emulator --panel: from its start to the first answer, and the memory of many registers before and after sales.

Usage: bench/panel.py SPF-EMULATOR"""

import functools
import operator
import socket
import statistics
import sys
import time
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parent.parent / "tests"))
from softwareregister import SoftwareRegister

STARTS, REGISTERS, SALES = 20, 20, 100
PRICE = b"100.00"
ITEM = ("Молоко".encode("cp866"), b"", b"1.000", PRICE, b"0", b"2", b"", b"4", b"", b"", b"", b"", b"1", b"0", b"2", *[b""] * 8)


class Host:
    """Sells by HEX frames."""

    def __init__(self, line):
        self.socket = socket.create_connection(line)
        self.id = 0x20

    def send(self, code, *fields):
        self.id = 0x20 if self.id > 0xF0 else self.id + 1
        body = b"QZXW" + bytes([self.id]) + b"%02X" % code + b"".join(field + b"\x1c" for field in fields) + b"\x03"
        self.socket.sendall(b"\x02" + body + b"%02X" % functools.reduce(operator.xor, body))
        answer = b""
        while answer[-3:-2] != b"\x03":
            answer += self.socket.recv(4096)
        if answer[4:6] != b"00":
            sys.exit(f"{code:02X} was answered {answer}")
        return answer[6:-3].split(b"\x1c")[:-1]

    def sell(self):
        self.send(0x20, b"2", b"", b"X", b"", b"", b"1", b"", b"0", b"", b"")
        self.send(0x30, *ITEM)
        self.send(0x34)
        self.send(0x35, b"0", PRICE)
        self.send(0x22, b"0", b"1", b"0")


def main():
    path = sys.argv[1]
    times = []
    for _ in range(STARTS):
        begun = time.monotonic()
        with SoftwareRegister(path) as register:
            register.ask("/state")
            times.append((time.monotonic() - begun) * 1000)
    print(f"start to first answer, {STARTS} starts: median {statistics.median(times):.0f} ms, longest {max(times):.0f} ms")
    with SoftwareRegister(path, "--registers", str(REGISTERS)) as registers:
        before = registers.memory()
        for line in registers.lines:
            host = Host(line)
            host.send(0x00, *host.send(0xA7))
            host.send(0x6B, b"X", b"")
            for _ in range(SALES):
                host.sell()
        print(f"{REGISTERS} registers: {before:.0f} MB, after {SALES} sales each {registers.memory():.0f} MB")


main()
