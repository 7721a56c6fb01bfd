"""The test server as a process, and clients that say exactly what they are told to."""

import json
import socket
import ssl
import subprocess
import sys
import time

TOKEN = "0123456789abcdef"
# A folder with the certificate of all servers here, and with that of whom their clients trust.
TLS = None


def make_authority(folder):
    openssl("req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "2", "-subj", "/CN=Test CA",
            "-keyout", f"{folder}/ca.key", "-out", f"{folder}/ca.pem")


def make_certificate(folder, name="server", curve="P-256"):
    """Of 127.0.0.1 and two names."""
    openssl("req", "-x509", "-newkey", "ec", "-pkeyopt", f"ec_paramgen_curve:{curve}", "-nodes", "-days", "1",
            "-subj", f"/CN={name}", "-addext", "subjectAltName=IP:127.0.0.1,IP:::1,DNS:till.example,DNS:localhost",
            "-addext", "basicConstraints=critical,CA:false",
            "-CA", f"{folder}/ca.pem", "-CAkey", f"{folder}/ca.key", "-keyout", f"{folder}/{name}.key", "-out", f"{folder}/{name}.pem")


def openssl(*arguments):
    subprocess.run(["openssl", *arguments], check=True, capture_output=True)


class Server:
    def __init__(self, *options):
        self.host = options[options.index("--address") + 1] if "--address" in options else "127.0.0.1"
        if TLS and "--tls" not in options:
            options = (*options, "--tls", TLS)
        self.tls = ssl.create_default_context(cafile=f"{TLS}/ca.pem") if TLS else None
        self.process = subprocess.Popen([sys.argv[1], *options], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.port = int(self.process.stdout.readline())

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.stdout.close()
        self.status = self.process.wait(timeout=10)

    def connect(self, source=None):
        family = socket.AF_INET6 if ":" in self.host else socket.AF_INET
        client = socket.socket(family, socket.SOCK_STREAM)
        client.settimeout(10)
        # As HTTP's clients do: a handshake's last word and a request come one after the other.
        client.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        if source:
            client.bind((source, 0))
        client.connect((self.host, self.port))
        return self.tls.wrap_socket(client, server_hostname="localhost") if self.tls else client

    def connect_plainly(self, source="127.0.0.1"):
        return socket.create_connection((self.host, self.port), timeout=10, source_address=(source, 0))

    def ask(self, text, source=None):
        """One request, up to the end of the connection: status line and headers, and the body."""
        with self.connect(source) as client:
            client.sendall(text)
            return split(everything(client))

    def get(self, path, source=None):
        return self.ask(b"GET %s HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n\r\n" % path.encode(), source)

    def counters(self):
        return json.loads(self.get("/counters")[1])

    def until(self, condition):
        """Counters for which that holds; they may take a moment."""
        end = time.monotonic() + 30
        while True:
            counters = self.counters()
            if condition(counters):
                return counters
            assert time.monotonic() < end, counters

    def peak_memory(self):
        """In KiB."""
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            return next(int(line.split()[1]) for line in status if line.startswith("VmHWM:"))


def split(text):
    head, _, body = text.partition(b"\r\n\r\n")
    return head.decode(), body


def everything(client):
    """What comes until the server closes, however it does."""
    text = b""
    try:
        while part := client.recv(65536):
            text += part
    except ConnectionResetError:
        pass
    return text


def until(client, end):
    text = b""
    while end not in text:
        part = client.recv(4096)
        assert part, text
        text += part
    return text
