"""A register's network port, to which any number of hosts connect: whom of them it hears is the register's own matter."""

import contextlib
import re
import select
import socket
import threading
import time

from lines import Cut, TcpLine

# Of a document over HEX. Behind payment, or the sum of cash in or out, a host has nothing more to send but the close.
OPENED, ITEM, PAID, CLOSED = "opened", "item", "paid", "closed"
HEX_STEPS = {b"20": OPENED, b"30": ITEM, b"35": PAID, b"36": PAID}
HEX_CLOSE = b"22"
HEX_START = 0x02
# With these a document is stored; a receipt is one request.
XML_CLOSE = re.compile(rb"<Command>(4|6|8|12|18)</Command>")
XML_RECEIPT = re.compile(rb"<Command>8</Command>")


def command(data):
    """Of a HEX request that begins here."""
    return data[6:8] if data[:1] == bytes([HEX_START]) else b""


def step(data):
    """Where a document is when this request has been answered; nothing for what is no step."""
    return CLOSED if is_closing(data) else HEX_STEPS.get(command(data))


def is_closing(data):
    return command(data) == HEX_CLOSE or XML_CLOSE.search(data) is not None


def is_whole_receipt(data):
    return XML_RECEIPT.search(data) is not None


class Hub(TcpLine):
    """Each host has a connection of its own to the register. A trap is sprung once, at the answer to a step of a document, before the
    host has it: its action gets the host's port. Or the closing request is held back."""

    def __init__(self, target, folder):
        super().__init__(target, folder)
        self._lock = threading.Lock()
        self._traps = {}
        self._hold = None
        # Connections whose request is held back now.
        self.held = set()
        self.mends = 0

    def set_trap(self, at, action):
        with self._lock:
            self._traps[at] = action

    def hold_close(self, seconds, action, is_meant=is_closing):
        """The next closing request arrives so much later, or when all is mended; the action, which gets its host's port, is called when
        it is held."""
        self._hold = (is_meant, seconds, action)

    def forget_hold(self):
        self._hold = None

    def mend(self):
        super().mend()
        self._traps = {}
        self._hold = None
        self.mends += 1

    def serve(self):
        host, _ = self.listener.accept()
        threading.Thread(target=self._serve_host, args=(host,), daemon=True).start()

    def _serve_host(self, host):
        with host, contextlib.suppress(OSError, Cut):
            host.setblocking(True)
            host.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            with self.reach_register() as register:
                Pair(self, host, register).carry()

    def take_trap(self, at):
        with self._lock:
            return self._traps.pop(at, None)

    def take_hold(self, data):
        """Seconds and action, when such a request is to be held."""
        with self._lock:
            if self._hold is None or not self._hold[0](data):
                return None
            hold, self._hold = self._hold, None
        return hold[1:]

    def is_down(self):
        return self.is_ended or time.monotonic() < self.down_until

    def pass_on(self, way, to, data):
        self._pass(way, to, data)


class Pair:
    """One host's connection."""

    def __init__(self, hub, host, register):
        self._hub = hub
        self._host = host
        self._register = register
        self._step = None

    def carry(self):
        while not self._hub.is_down():
            if self._hub.cut_after and self._hub.cut_after[0] <= 0:
                self._hub.cut()
            ready, _, _ = select.select([self._host, self._register], [], [], 0.1)
            for end in ready:
                data = end.recv(65536)
                if not data:
                    raise Cut
                if end is self._host:
                    self._request(data)
                else:
                    self._answer(data)
        raise Cut

    def _request(self, data):
        self._step = step(data)
        if hold := self._hub.take_hold(data):
            seconds, action = hold
            self._hub.held.add(self)
            try:
                action(self._host.getpeername()[1])
                self._wait(seconds)
            finally:
                self._hub.held.discard(self)
        self._hub.pass_on("request", self._register.fileno(), data)

    def _answer(self, data):
        if self._step and (trap := self._hub.take_trap(self._step)):
            trap(self._host.getpeername()[1])
        self._step = None
        self._hub.pass_on("answer", self._host.fileno(), data)

    def _wait(self, seconds):
        """The register may hang up meanwhile, and then it never hears of it. What comes late is what the host's system sends again
        and again, also for a program that has ended, unless that has forgotten it: then the connection is reset."""
        end, mends = time.monotonic() + seconds, self._hub.mends
        ends = [self._register, self._host]
        while time.monotonic() < end and self._hub.mends == mends and not self._hub.is_ended:
            for one in select.select(ends, [], [], 0.05)[0]:
                if not one.recv(1, socket.MSG_PEEK):
                    if one is self._register:
                        raise Cut
                    ends.remove(one)
