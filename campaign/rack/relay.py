"""The way from one service and its workers to the database, which can be cut, stand still, and tell where a program is."""

import contextlib
import re
import select
import socket
import threading
import time

BEGUN, SETTLED = "begun", "settled"
# What a transaction has written, by what the last of its statements begin with.
MARKS = {b"INSERT INTO attempts": BEGUN, b"UPDATE attempts SET ended": SETTLED}
BEGIN, COMMIT = b"BEGIN", b"COMMIT"
# The server is told such a statement once, and runs it by its name then.
PREPARED = re.compile(rb"PREPARE (\w+) AS (.*)", re.DOTALL)
EXECUTED = re.compile(rb"EXECUTE (\w+)")


def step_of(data, names):
    """What these words to the server write; notes in names what others are to write by their name."""
    if prepared := PREPARED.search(data):
        names[prepared[1]] = next((step for mark, step in MARKS.items() if prepared[2].startswith(mark)), None)
        return None
    executed = EXECUTED.search(data)
    return names.get(executed[1]) if executed else None


class Gone(Exception):
    """One end has hung up, or was cut off."""


class Relay(threading.Thread):
    """Listens for the service. A trap is sprung once, in whichever connection comes to its step first: its action is called before
    the commit is handed on ("before"), or when it was answered, which nobody has heard of yet ("behind")."""

    def __init__(self, place):
        super().__init__(daemon=True)
        self._place = place
        self._listener = socket.create_server(("127.0.0.1", 0))
        self._listener.settimeout(0.1)
        self.port = self._listener.getsockname()[1]
        self._lock = threading.Lock()
        self._traps = {}
        # Each as the sockets of its two ends.
        self._connections = set()
        # Ports at which those begin whose host has begun a document and not settled it.
        self._at_work = set()
        self._down_until = 0
        self._still_until = 0
        self.is_ended = False

    def url(self):
        return f"postgresql://postgres@127.0.0.1:{self.port}/postgres?sslmode=disable"

    def cut(self, seconds):
        """All connections end, and there are none for a time."""
        self._down_until = time.monotonic() + seconds
        with self._lock:
            for connection in self._connections:
                self._shut(connection)

    @staticmethod
    def _shut(connection):
        for end in connection:
            with contextlib.suppress(OSError):
                end.shutdown(socket.SHUT_RDWR)

    def stand_still(self, seconds):
        """Nothing is handed on, and nobody is told."""
        self._still_until = time.monotonic() + seconds

    def mend(self):
        self._down_until = self._still_until = 0
        self._traps = {}

    def set_trap(self, step, side, action):
        with self._lock:
            self._traps[(step, side)] = action

    def hosts_at_work(self):
        with self._lock:
            return sorted(self._at_work)

    def _note(self, host, step):
        with self._lock:
            (self._at_work.add if step == BEGUN else self._at_work.discard)(host)

    def _spring(self, step, side):
        with self._lock:
            action = self._traps.pop((step, side), None)
        if action:
            action()

    def run(self):
        while not self.is_ended:
            with contextlib.suppress(OSError):
                host, _ = self._listener.accept()
                if time.monotonic() < self._down_until:
                    host.close()
                else:
                    threading.Thread(target=self._carry, args=(host,), daemon=True).start()
        self._listener.close()

    def _carry(self, host):
        with host, contextlib.suppress(OSError, Gone), socket.socket(socket.AF_UNIX) as server:
            server.connect(f"{self._place}/.s.PGSQL.5432")
            host.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            host.setblocking(True)
            port = host.getpeername()[1]
            with self._lock:
                self._connections.add((host, server))
            try:
                # Since it was taken.
                if self.is_ended or time.monotonic() < self._down_until:
                    raise Gone
                self._exchange(host, server)
            finally:
                with self._lock:
                    self._connections.discard((host, server))
                    self._at_work.discard(port)

    def _exchange(self, host, server):
        written, committing, port, names = None, None, host.getpeername()[1], {}
        poll, ends = select.poll(), {host.fileno(): host, server.fileno(): server}
        for descriptor in ends:
            poll.register(descriptor, select.POLLIN)
        while True:
            for descriptor, _ in poll.poll():
                self._wait_while_still()
                end = ends[descriptor]
                data = end.recv(65536)
                if not data:
                    raise Gone
                if end is host:
                    if BEGIN in data[:16]:
                        written = None
                    written = step_of(data, names) or written
                    committing = written if COMMIT in data[:16] else None
                    if committing:
                        written = None
                        self._spring(committing, "before")
                elif committing:
                    self._note(port, committing)
                    self._spring(committing, "behind")
                    committing = None
                (server if end is host else host).sendall(data)

    def _wait_while_still(self):
        while time.monotonic() < self._still_until and not self.is_ended:
            time.sleep(0.02)

    def end(self):
        self.is_ended = True
        self.cut(0)
        self.join(5)
