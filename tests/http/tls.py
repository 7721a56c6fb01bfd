#!/usr/bin/python3
"""The server with TLS: all that clients.py has, and what TLS has besides. Usage: tls.py SERVER"""

import json
import ssl
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import rig
from clients import CLOSE, HOST, Deadlines, Requests, Waiting, post  # noqa: F401
from rig import Server, everything, make_authority, make_certificate, split, until

GET = b"GET /echo/a HTTP/1.1\r\n" + CLOSE + b"\r\n"
HELLO = b"\x16\x03\x01\x02\x00\x01\x00"


class Tls(unittest.TestCase):
    def test_versions_and_nothing_in_plain(self):
        with Server() as server:
            with server.connect_plainly() as client:
                client.sendall(GET)
                self.assertNotIn(b"HTTP", everything(client))
            for version in (ssl.TLSVersion.TLSv1_2, ssl.TLSVersion.TLSv1_3):
                server.tls.minimum_version = server.tls.maximum_version = version
                self.assertIn(" 200 ", server.ask(GET)[0])
            server.tls.set_ciphers("ALL:@SECLEVEL=0")
            server.tls.minimum_version = server.tls.maximum_version = ssl.TLSVersion.TLSv1_1
            with self.assertRaises(ssl.SSLError):
                server.connect()

    def test_large_answers_are_whole(self):
        with Server() as server:
            head, body = server.get("/large")
            self.assertIn(" 200 ", head)
            self.assertEqual(8 * 1024 * 1024, len(body))

    def test_handshakes_have_their_time_and_their_number(self):
        with Server("--request", "500") as server:
            for beginning in (b"", HELLO):
                with server.connect_plainly() as client:
                    client.sendall(beginning)
                    self.assertEqual(b"", everything(client)[:1].strip(b"\x15"))
            server.until(lambda counters: counters["overdue"] == 2 and counters["connections"] == 1)
        with Server("--strangers", "8") as server:
            silent = [server.connect_plainly("127.0.0.2") for _ in range(20)]
            server.until(lambda counters: counters["refused"] >= 12)
            for client in silent:
                client.close()
            server.until(lambda counters: counters["connections"] == 1)

    def test_a_new_certificate_is_for_new_connections(self):
        with Server() as server, server.connect() as kept:
            make_certificate(rig.TLS, curve="P-384")
            before = kept.getpeercert()["serialNumber"]
            self.assertIn(" 204 ", server.ask(post(b"/identity", b""))[0])
            with server.connect() as client:
                self.assertNotEqual(before, client.getpeercert()["serialNumber"])
                client.sendall(GET)
                self.assertEqual(["echo", "a"], json.loads(split(everything(client))[1])["segments"])
            kept.sendall(b"GET /echo/b HTTP/1.1\r\n" + HOST + b"\r\n")
            self.assertIn(b'"b"', until(kept, b"}"))
            # One that cannot be used changes nothing.
            Path(rig.TLS, "server.key").write_text("", encoding="ascii")
            self.assertIn(" 500 ", server.ask(post(b"/identity", b""))[0])
            self.assertIn(" 200 ", server.ask(GET)[0])
        make_certificate(rig.TLS)

    def test_files_that_are_no_certificate(self):
        with tempfile.TemporaryDirectory() as folder:
            make_authority(folder)
            for name in ("server", "other"):
                make_certificate(folder, name)
            certificate, key, other = (Path(folder, name) for name in ("server.pem", "server.key", "other.key"))
            text = certificate.read_text(encoding="ascii")
            rows = [
                (certificate, "", "server.pem: has no certificate"), (certificate, text[:200], "server.pem with"),
                (key, text, "server.key: has no key"), (key, other.read_text(encoding="ascii"), "do not match"),
                (key, None, "server.key: No such file")]
            for file, content, part in rows:
                good = file.read_bytes()
                if content is None:
                    file.unlink()
                else:
                    file.write_text(content, encoding="ascii")
                done = subprocess.run([sys.argv[1], "--tls", folder], capture_output=True, text=True, check=False,
                                      stdin=subprocess.DEVNULL)
                self.assertIn(part, done.stderr)
                self.assertEqual(1, done.returncode)
                file.write_bytes(good)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as made:
        make_authority(made)
        make_certificate(made)
        rig.TLS = made
        unittest.main(argv=sys.argv[:1] + sys.argv[2:])
