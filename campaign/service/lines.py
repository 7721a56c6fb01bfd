"""Lines between the service and its registers, which can be cut, fall silent, and lead to another register."""

import contextlib
import os
import select
import socket
import threading
import time
import tty


class Cut(Exception):
    """The line is gone."""


class Line(threading.Thread):
    """Hands on what comes, one host at a time. Requests go to whatever register listens on `target`."""

    def __init__(self, target):
        super().__init__(daemon=True)
        self.target = target
        self.is_ended = False
        self.down_until = 0
        self.silent = {"request": 0, "answer": 0}
        self.cut_after = None
        # When, since 1970.
        self.cuts = []

    def hang_up(self, seconds, pieces=0, is_passed=True):
        """Behind so many pieces more, of which the last one arrives or not; then there is no line for a time."""
        self.cut_after = [pieces, is_passed, seconds]

    def fall_silent(self, seconds, is_deaf):
        """No answer comes; a deaf one takes no request either."""
        until = time.monotonic() + seconds
        self.silent = {"request": until if is_deaf else 0, "answer": until}

    def lead_to(self, target):
        """Another register stands at this port from now on."""
        self.target = target
        self.hang_up(0.3)

    def mend(self):
        self.cut_after = None
        self.down_until = 0
        self.silent = {"request": 0, "answer": 0}

    def end(self):
        self.is_ended = True
        if self.is_alive():
            self.join(5)

    def run(self):
        while not self.is_ended:
            if time.monotonic() < self.down_until:
                self.vanish()
                time.sleep(0.05)
                continue
            with contextlib.suppress(OSError, Cut):
                self.serve()
        self.vanish()

    def carry(self, host, register):
        """Until one of them is gone, or the line is cut."""
        poll = select.poll()
        for descriptor in (host, register):
            poll.register(descriptor, select.POLLIN)
        while not self.is_ended:
            if self.cut_after and self.cut_after[0] <= 0:
                self.cut()
            for descriptor, event in poll.poll(100):
                data = os.read(descriptor, 65536) if event & select.POLLIN else b""
                if not data:
                    raise Cut
                self._pass(*(("request", register) if descriptor == host else ("answer", host)), data)

    def _pass(self, way, to, data):
        if time.monotonic() < self.silent[way]:
            return
        if self.cut_after:
            self.cut_after[0] -= 1
            if self.cut_after[0] <= 0 and not self.cut_after[1]:
                self.cut()
        while data:
            data = data[os.write(to, data):]

    def cut(self):
        seconds = self.cut_after[2]
        self.cut_after = None
        self.down_until = time.monotonic() + seconds
        self.cuts.append(time.time())
        raise Cut

    def reach_register(self):
        register = socket.create_connection(("127.0.0.1", self.target), 1)
        register.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        register.setblocking(True)
        return register

    def place(self):
        """What a process that has it open has among its files: a port of this machine, or the name of a file."""
        raise NotImplementedError

    def serve(self):
        """One host, from its coming to its end."""
        raise NotImplementedError

    def vanish(self):
        """What a host finds while there is no line."""
        raise NotImplementedError


class TcpLine(Line):
    def __init__(self, target, _folder):
        super().__init__(target)
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.listener.settimeout(0.1)
        self.port = f"tcp:127.0.0.1:{self.listener.getsockname()[1]}"

    def place(self):
        return self.listener.getsockname()[1]

    def serve(self):
        host, _ = self.listener.accept()
        with host:
            host.setblocking(True)
            host.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            with self.reach_register() as register:
                self.carry(host.fileno(), register.fileno())

    def vanish(self):
        with contextlib.suppress(OSError):
            self.listener.accept()[0].close()


class PtyLine(Line):
    """The device is there while its register is, as that of an USB converter."""

    def __init__(self, target, folder):
        super().__init__(target)
        self.port = str(folder / "line")

    def place(self):
        return os.path.realpath(self.port)

    def serve(self):
        with self.reach_register() as register:
            master, slave = os.openpty()
            try:
                tty.setraw(slave)
                name = os.ttyname(slave)
                os.close(slave)
                os.symlink(name, self.port + ".new")
                os.replace(self.port + ".new", self.port)
                self._wait_for_host(master, register)
                self.carry(master, register.fileno())
            finally:
                self.vanish()
                os.close(master)

    def _wait_for_host(self, master, register):
        poll = select.poll()
        poll.register(master, select.POLLIN)
        register_poll = select.poll()
        register_poll.register(register, select.POLLIN)
        while not self.is_ended:
            events = poll.poll(0)
            if not events or events[0][1] & select.POLLIN:
                return
            if register_poll.poll(20):
                raise Cut
            if self.cut_after and self.cut_after[0] <= 0:
                self.cut()
        raise Cut

    def vanish(self):
        with contextlib.suppress(FileNotFoundError):
            os.unlink(self.port)
