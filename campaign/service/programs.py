"""Programs of ours as processes: none outlives the campaign, and each is ended by its own id."""

import contextlib
import random
import signal
import socket
import subprocess
from pathlib import Path

PATIENCE = 150


# Names that say to other campaigns of this machine which ports are given.
GIVEN = []


def is_taken(port):
    """Else it is this process's from now on, as long as it lives."""
    name = socket.socket(socket.AF_UNIX)
    try:
        name.bind(f"\0frspf-campaign-{port}")
    except OSError:
        name.close()
        return True
    GIVEN.append(name)
    return False


def free_port():
    """One of this machine that nobody listens on now; it is taken again and again, as programs are started anew.
    Below those that the system gives to whoever connects, which might have it while its program is dead."""
    while True:
        port = random.randrange(20000, 32000)
        if is_taken(port):
            continue
        with contextlib.closing(socket.socket()) as taken, contextlib.suppress(OSError):
            taken.bind(("127.0.0.1", port))
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
