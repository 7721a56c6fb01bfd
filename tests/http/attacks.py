#!/usr/bin/python3
"""Everybody attacks at once, and a good client is served all the while. Usage: attacks.py SERVER"""

import asyncio
import itertools
import multiprocessing
import resource
import sys
import time

from rig import TOKEN, Server

SECONDS = 25
MEMORY = 64 * 1024
HEAD = b"POST /json HTTP/1.1\r\nHost: localhost\r\n"
WAIT = b"GET /wait HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer %s\r\n\r\n" % TOKEN.encode()


def be_good(server, stop, slowest):
    """Asks in a process of its own, so that the attackers do not hold it up."""
    # The server ends with its parent, whose end of the pipe is the last one then.
    server.process.stdin.close()
    body = b"x" * 10_000
    request = (b"POST /echo/a HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\nContent-Length: %d\r\n\r\n%s"
               % (len(body), body))
    while not stop.is_set():
        start = time.monotonic()
        head, _ = server.ask(request, "127.0.0.2")
        assert " 200 " in head, head
        slowest.value = max(slowest.value, time.monotonic() - start)
        stop.wait(0.05)


class Attack:
    def __init__(self, server):
        self.server = server
        self.end = time.monotonic() + SECONDS
        self.cut = 0
        self.flooded = 0
        self.waiting = 0

    def goes_on(self):
        return time.monotonic() < self.end

    async def connect(self, source):
        return await asyncio.open_connection(self.server.host, self.server.port, local_addr=(source, 0))

    async def again_and_again(self, source, attack):
        """However often it is thrown out."""
        while self.goes_on():
            try:
                reader, writer = await self.connect(source)
                await attack(reader, writer)
                writer.transport.abort()
            except OSError:
                self.cut += 1
                await asyncio.sleep(0.2)

    async def read(self, reader):
        """Up to the end of the connection, or of the attack."""
        return await asyncio.wait_for(reader.read(), max(0, self.end - time.monotonic()))

    def sending(self, beginning, piece, pause=0):
        """That piece again and again behind the head of a request."""
        async def send(_, writer):
            writer.write(HEAD + beginning)
            while self.goes_on():
                writer.write(piece)
                await writer.drain()
                await asyncio.sleep(pause)

        return send

    async def be_silent(self, reader, _):
        if await self.read(reader) == b"":
            raise ConnectionResetError

    async def half_close(self, reader, writer):
        writer.write(HEAD)
        writer.write_eof()
        await self.read(reader)

    async def flood(self, sources):
        """10,000 connections, evenly."""
        for number in range(10_000):
            late = number * (SECONDS - 5) / 10_000 - (time.monotonic() - (self.end - SECONDS))
            if late > 0:
                await asyncio.sleep(late)
            try:
                _, writer = await self.connect(next(sources))
                writer.write(b"GET /echo/a HTTP/1.1\r\n")
                writer.transport.abort()
                self.flooded += 1
            except OSError:
                pass

    async def wait(self):
        """As a till with a token does, one after another, so that the first shows its token in time."""
        lines = []
        for _ in range(1000):
            reader, writer = await self.connect("127.0.3.1")
            writer.write(WAIT)
            lines.append((reader, writer))
            if len(lines) < 20:
                await asyncio.sleep(0.05)
        self.waiting = (await asyncio.to_thread(self.server.until, lambda counters: counters["waiting"] == 1000))["waiting"]
        await asyncio.sleep(max(0, self.end - time.monotonic()))
        for _, writer in lines:
            writer.transport.abort()

    async def all_at_once(self):
        trickle = self.sending(b"", b"X-A: b\r\n", 1)
        trickle_body = self.sending(b"Content-Length: 1000000\r\n\r\n" + bytes(900_000), b"x", 1)
        gigabyte = self.sending(b"Content-Length: 1073741824\r\n\r\n", bytes(1024 * 1024))
        chunks = self.sending(b"Transfer-Encoding: chunked\r\n\r\n", b"100000\r\n" + bytes(1024 * 1024) + b"\r\n")
        slow = [self.again_and_again(f"127.0.1.{number % 20 + 1}", trickle) for number in range(500)]
        bodies = [self.again_and_again(f"127.0.2.{number}", trickle_body) for number in range(1, 31)]
        silent = [self.again_and_again(f"127.0.4.{number % 3 + 1}", self.be_silent) for number in range(60)]
        halves = [self.again_and_again(f"127.0.5.{number % 3 + 1}", self.half_close) for number in range(60)]
        large = [self.again_and_again("127.0.6.1", gigabyte), self.again_and_again("127.0.6.2", chunks)]
        flood = self.flood(itertools.cycle(f"127.0.7.{number}" for number in range(1, 11)))
        await asyncio.gather(self.wait(), flood, *slow, *bodies, *silent, *halves, *large)


def main():
    with Server("--token", TOKEN) as server:
        stop, slowest = multiprocessing.Event(), multiprocessing.Value("d", 0)
        good = multiprocessing.Process(target=be_good, args=(server, stop, slowest))
        good.start()
        most = resource.getrlimit(resource.RLIMIT_NOFILE)[1]
        resource.setrlimit(resource.RLIMIT_NOFILE, (most, most))
        attack = Attack(server)
        asyncio.run(attack.all_at_once())
        stop.set()
        good.join()
        memory = server.peak_memory()
        left = server.until(lambda counters: counters["waiting"] == 0)
    print(f"slowest {slowest.value:.3f} s, {memory} KiB, {attack.flooded} connections, {attack.waiting} waited, {left}")
    assert good.exitcode == 0, "the good client was not served"
    assert slowest.value < 1, "the good client was served too late"
    assert memory < MEMORY, "too much memory"
    assert attack.flooded == 10_000 and attack.waiting == 1000, "the attack was none"
    # Each of the 500 at least twice.
    assert left["overdue"] >= 1000, "slow clients were not cut"


if __name__ == "__main__":
    main()
