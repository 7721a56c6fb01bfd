#!/usr/bin/python3
"""Clients as they are: what they send on the line, and what they get. Usage: clients.py SERVER"""

import json
import socket
import sys
import time
import unittest

import rig

from rig import Server, everything, split, until

HOST = b"Host: localhost\r\n"
CLOSE = HOST + b"Connection: close\r\n"


def post(path, body, more=b""):
    return b"POST %s HTTP/1.1\r\n%s%sContent-Length: %d\r\n\r\n%s" % (path, CLOSE, more, len(body), body)


class Requests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = cls.enterClassContext(Server())

    def status(self, text):
        return self.server.ask(text)[0].split(" ")[1]

    def test_status(self):
        rows = [
            (b"GET /echo/a HTTP/1.0\r\n\r\n", "200"),
            (b"GET /echo/a HTTP/1.1\r\n\r\n", "400"),  # no Host
            (b"GET /echo/a HTTP/1.1\r\nHost: evil.example\r\nConnection: close\r\n\r\n", "421"),
            (b"GET /echo/%FF HTTP/1.1\r\n" + CLOSE + b"\r\n", "400"),
            (b"GET http://localhost/echo/a HTTP/1.1\r\n" + CLOSE + b"\r\n", "200"),
            (b"BREW /echo/a HTTP/1.1\r\n" + CLOSE + b"\r\n", "405"),
            (b"GET /echo/a HTTP/1.1\r\nX: " + b"x" * 6000 + b"\r\n" + CLOSE + b"\r\n", "200"),
            (b"GET /echo/a HTTP/1.1\r\nX: " + b"x" * 17000 + b"\r\n" + CLOSE + b"\r\n", "431"),
            (post(b"/json", b'\xef\xbb\xbf{"a": 1}'), "200"),
            (post(b"/json", b'{"a": 1'), "400"),
            (post(b"/echo/a", bytes(1024 * 1024)), "200"),
            (post(b"/echo/a", bytes(1024 * 1024 + 1)), "413"),
            (post(b"/echo/a", b"", b"Transfer-Encoding: chunked\r\n").replace(b"Content-Length: 0\r\n", b"")
             + b"5\r\nabcde\r\n0\r\n\r\n", "200"),
        ]
        for text, status in rows:
            with self.subTest(text[:60]):
                self.assertEqual(self.status(text), status)

    def test_request_as_it_was_sent(self):
        head, body = self.server.ask(b"POST /echo/a%2Fb?x=1+2&y=%D1%91 HTTP/1.1\r\n" + CLOSE
                                     + b"Idempotency-Key: k\r\nContent-Length: 3\r\n\r\nabc")
        echo = json.loads(body)
        self.assertEqual(echo["segments"], ["echo", "a/b"])
        self.assertEqual(echo["query"], {"x": "1 2", "y": "ё"})
        self.assertEqual((echo["size"], echo["client"]), (3, "127.0.0.1"))
        self.assertEqual(echo["headers"]["idempotency-key"], "k")
        self.assertIn("nosniff", head)

    def test_two_requests_on_a_connection(self):
        with self.server.connect() as client:
            client.sendall(b"GET /echo/1 HTTP/1.1\r\n" + HOST + b"\r\nGET /echo/2 HTTP/1.1\r\n" + CLOSE + b"\r\n")
            text = everything(client)
        self.assertEqual(text.count(b"HTTP/1.1 200"), 2)
        self.assertIn(b'"echo","2"', text)

    def test_expect(self):
        head = b"POST /echo/a HTTP/1.1\r\n" + CLOSE + b"Expect: 100-continue\r\nContent-Length: %d\r\n\r\n"
        with self.server.connect() as client:
            client.sendall(head % 3)
            self.assertTrue(until(client, b"\r\n\r\n").startswith(b"HTTP/1.1 100"))
            client.sendall(b"abc")
            self.assertEqual(json.loads(split(everything(client))[1])["size"], 3)
        self.assertIn("413", self.server.ask(head % 2_000_000)[0])

    def test_head(self):
        for path in (b"/echo/a", b"/events"):
            head, body = self.server.ask(b"HEAD %s HTTP/1.1\r\n%s\r\n" % (path, CLOSE))
            self.assertIn(" 200 ", head)
            self.assertEqual(body, b"")

    def test_body_without_end(self):
        with self.server.connect() as client:
            client.sendall(b"POST /json HTTP/1.1\r\n" + CLOSE + b"Transfer-Encoding: chunked\r\n\r\n")
            with self.assertRaises(OSError):
                for _ in range(1000):
                    client.sendall(b"10000\r\n" + bytes(0x10000) + b"\r\n")

    def test_other_addresses(self):
        for address in ("::1", "127.0.0.9"):
            with Server("--address", address) as server:
                self.assertEqual(json.loads(server.get("/echo/a")[1])["client"], "127.0.0.1" if "." in address else address)


class Callers(unittest.TestCase):
    def test_who_asks_is_no_stranger_where_there_are_no_tokens(self):
        with Server("--strangers", "3") as server:
            kept = [server.connect() for _ in range(3)]
            for client in kept:
                client.sendall(b"GET /echo/a HTTP/1.1\r\n" + HOST + b"\r\n")
                until(client, b"}")
            more = [server.connect() for _ in range(20)]
            for client in more:
                client.sendall(b"GET /echo/b HTTP/1.1\r\n" + HOST + b"\r\n")
                self.assertIn(b'"b"', until(client, b"}"))
            self.assertEqual(0, server.counters()["refused"])
            for client in kept + more:
                client.close()


class Waiting(unittest.TestCase):
    WAIT = b"GET /wait HTTP/1.1\r\n" + CLOSE + b"\r\n"
    EVENTS = b"GET /events HTTP/1.1\r\n" + CLOSE + b"\r\n"

    def publish(self, server, number):
        head, _ = server.ask(post(b"/events", b'{"n":%d}' % number))
        self.assertIn(" 204 ", head)

    def test_events_come_to_those_who_wait(self):
        with Server() as server, server.connect() as waiter, server.connect() as reader:
            waiter.sendall(self.WAIT)
            reader.sendall(self.EVENTS)
            server.until(lambda counters: counters["waiting"] == 1 and counters["streaming"] == 1)
            self.publish(server, 7)
            event = json.loads(split(everything(waiter))[1])
            self.assertEqual(event["data"], {"n": 7})
            self.assertIn(b'data: {"n":7}', until(reader, b"}\n\n"))
            again = b"Last-Event-ID: %s\r\n" % event["id"].replace("-1", "-0").encode()
            with server.connect() as late:
                late.sendall(self.EVENTS.replace(b"\r\n\r\n", b"\r\n" + again + b"\r\n"))
                self.assertIn(b'data: {"n":7}', until(late, b"}\n\n"))
        # With a stream open.
        self.assertEqual(server.status, 0)

    def test_stream_is_kept_alive(self):
        with Server("--keep-alive", "20") as server, server.connect() as reader:
            reader.sendall(self.EVENTS)
            until(reader, b"\r\n:\n\n\r\n")
            until(reader, b"\r\n:\n\n\r\n")

    def test_clients_who_left_are_let_go(self):
        with Server() as server:
            for text, counter in ((self.WAIT, "waiting"), (self.EVENTS, "streaming")):
                with server.connect() as client:
                    client.sendall(text)
                    server.until(lambda counters: counters[counter] == 1)
                server.until(lambda counters: counters[counter] == 0 and counters["connections"] == 1)
            # Those of old know no interim answer, so that nobody could tell whether they are there.
            with server.connect() as waiter:
                waiter.sendall(b"GET /wait HTTP/1.0\r\n\r\n")
                server.until(lambda counters: counters["waiting"] == 1)
                waiter.shutdown(socket.SHUT_WR)
                self.assertEqual(everything(waiter), b"")
            self.assertIn(" 204 ", server.get("/wait?timeout=10")[0], "whose time is up")

    def test_clients_who_have_no_more_to_say_are_answered(self):
        if rig.TLS:
            self.skipTest("the interim answer is for plain lines")
        with Server("--keep-alive", "20") as server, server.connect() as waiter, server.connect() as reader:
            for client, text in ((waiter, self.WAIT), (reader, self.EVENTS)):
                client.sendall(text)
                client.shutdown(socket.SHUT_WR)
            server.until(lambda counters: counters["waiting"] == 1 and counters["streaming"] == 1)
            until(reader, b"\r\n:\n\n\r\n")
            self.assertEqual(until(waiter, b"\r\n\r\n"), b"HTTP/1.1 102 Processing\r\n\r\n")
            self.publish(server, 7)
            head, body = split(everything(waiter))
            self.assertIn(" 200 ", head)
            self.assertEqual(json.loads(body)["data"], {"n": 7})
            self.assertIn(b'data: {"n":7}', until(reader, b"}\n\n"))
            reader.close()
            server.until(lambda counters: counters["streaming"] == 0)

    def test_server_ends_while_clients_wait(self):
        with Server() as server, server.connect() as waiter:
            waiter.sendall(self.WAIT)
            server.until(lambda counters: counters["waiting"] == 1)
        self.assertEqual(server.status, 0)


class Deadlines(unittest.TestCase):
    def trickle(self, client):
        """Seconds until the line was cut."""
        start = time.monotonic()
        client.settimeout(0.02)
        while time.monotonic() < start + 10:
            try:
                client.sendall(b"x")
                if client.recv(4096) == b"":
                    break
            except TimeoutError:
                continue
            except OSError:
                break
        return time.monotonic() - start

    def test_request_that_never_ends(self):
        head = b"POST /json HTTP/1.1\r\n" + HOST
        second = b"GET /echo/a HTTP/1.1\r\n" + HOST + b"\r\n"
        beginnings = (b"", head, head + b"Content-Length: 100000\r\n\r\n", second + head)
        # Whoever asks for the counters, or shakes hands, has no more time.
        with Server("--request", "500") as server:
            for beginning in beginnings:
                with self.subTest(beginning), server.connect() as client:
                    client.sendall(beginning)
                    self.assertLess(self.trickle(client), 5)
            self.assertEqual(server.counters()["overdue"], len(beginnings))

    def test_silence(self):
        with Server("--request", "500") as server, server.connect() as client:
            self.assertEqual(everything(client), b"")
            self.assertEqual(server.counters()["overdue"], 1)
        with Server("--idle", "100") as server, server.connect() as kept:
            kept.sendall(b"GET /echo/a HTTP/1.1\r\n" + HOST + b"\r\n")
            self.assertIn(b" 200 ", everything(kept))
            self.assertEqual(server.counters()["overdue"], 1)

    def test_answers_and_streams_that_nobody_takes(self):
        with Server("--idle", "200", "--keep-alive", "100000") as server, server.connect() as client:
            client.sendall(b"GET /large HTTP/1.1\r\n" + CLOSE + b"\r\n")
            # By the server, or by its system, which is told of the same time: whichever looks first.
            server.until(lambda counters: counters["connections"] == 1)
            with server.connect() as reader:
                reader.sendall(Waiting.EVENTS)
                until(reader, b"\n\n")
                body = json.dumps({"text": "x" * 1_000_000}).encode()
                server.until(lambda counters: counters["streaming"] == 0 or not server.ask(post(b"/events", body)))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
