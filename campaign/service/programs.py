"""Programs of ours as processes: none outlives the campaign, and each is ended by its own id."""

import contextlib
import random
import signal
import socket
import subprocess
from pathlib import Path

PATIENCE = 150


GIVEN = set()


def free_port():
    """One of this machine that nobody listens on now; it is taken again and again, as programs are started anew.
    Below those that the system gives to whoever connects, which might have it while its program is dead."""
    while True:
        port = random.randrange(20000, 32000)
        if port in GIVEN:
            continue
        with contextlib.closing(socket.socket()) as taken, contextlib.suppress(OSError):
            taken.bind(("127.0.0.1", port))
            GIVEN.add(port)
            return port


def children(process):
    """Process ids."""
    try:
        return [int(one) for one in Path(f"/proc/{process}/task/{process}/children").read_text(encoding="ascii").split()]
    except OSError:
        return []


class Program:
    """Started and killed many times over; what it says goes to one file. The thread that starts it has to live on,
    since it is killed when that is gone: not even a killed campaign leaves programs behind."""

    def __init__(self, command, log):
        self.command = ["setpriv", "--pdeathsig", "KILL", *map(str, command)]
        self.log = log
        self.process = None

    def start(self):
        with open(self.log, "ab") as log:
            self.process = subprocess.Popen(
                self.command, stdin=subprocess.DEVNULL, stdout=log, stderr=log, start_new_session=True)

    def is_alive(self):
        return self.process is not None and self.process.poll() is None

    def kill(self):
        self.end(signal.SIGKILL)

    def end(self, how=signal.SIGTERM, patience=PATIENCE):
        """Killed when it has not ended in that time."""
        if self.is_alive():
            self.process.send_signal(how)
        if self.process is not None:
            try:
                self.process.wait(patience)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
