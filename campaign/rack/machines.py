"""Services on machines of their own, as far as a program can tell: the clients see one rack."""

import contextlib
import os
import random
import signal
import threading
import time
import uuid

from programs import PATIENCE
from service import READY, Service

# A machine is known by these, and locks its ports for itself.
ELSEWHERE = ('mount --bind "$0" /etc/machine-id && mount --bind "$1" /proc/sys/kernel/random/boot_id && '
             'mount -t tmpfs none /run/lock -o mode=1777 && shift && exec "$@"')


class Machine:
    """This one, or one that has no more in common with it than its network."""

    def __init__(self, folder=None):
        self._prefix = []
        if folder:
            folder.mkdir()
            (folder / "machine-id").write_text(uuid.uuid4().hex + "\n", encoding="ascii")
            (folder / "boot_id").write_text(str(uuid.uuid4()) + "\n", encoding="ascii")
            self._prefix = ["unshare", "--mount", "sh", "-c", ELSEWHERE, folder / "machine-id", folder / "boot_id"]

    def take(self, service):
        """Its program runs there from its next start on."""
        program = service.program
        program.command = [*program.command[:3], *map(str, self._prefix), *program.command[3:]]


class Frozen:
    """Process groups that stand still for a time; whatever they were at, they go on with it."""

    def __init__(self):
        self._lock = threading.Lock()
        self._groups = {}

    def freeze(self, group, seconds):
        """False when it stands still already, or is gone."""
        with self._lock:
            if group in self._groups:
                return False
            try:
                os.killpg(group, signal.SIGSTOP)
            except ProcessLookupError:
                return False
            timer = self._groups[group] = threading.Timer(seconds, self._thaw, (group,))
            timer.daemon = True
            timer.start()
            return True

    def _thaw(self, group):
        with self._lock:
            self._groups.pop(group, None)
            with contextlib.suppress(ProcessLookupError):
                os.killpg(group, signal.SIGCONT)

    def end(self):
        for group, timer in list(self._groups.items()):
            timer.cancel()
            self._thaw(group)


class RackProgram:
    """All services as one program, for who ends or kills it."""

    def __init__(self, services):
        self._services = services

    def kill(self):
        for service in self._services:
            service.program.kill()

    def end(self):
        for service in self._services:
            if service.program.is_alive():
                service.program.process.send_signal(signal.SIGTERM)
        for service in self._services:
            service.program.end(patience=PATIENCE)


class Services:
    """Asks any of them, as a client does that has all of their addresses."""

    def __init__(self, services):
        self.each = services
        self.program = RackProgram(services)

    def start(self):
        for service in self.each:
            service.start()

    def wait(self):
        for service in self.each:
            service.wait()

    def wait_for_registers(self, count):
        """Until all have heard of so many, also of those that only others have."""
        end = time.monotonic() + READY
        while any(len(service.registers()) < count for service in self.each):
            if time.monotonic() > end:
                raise RuntimeError("the services do not hear of each other's registers")
            time.sleep(0.1)

    def workers(self):
        return [worker for service in self.each for worker in service.workers()]

    def ask(self, method, path, body=None, timeout=30.0, **headers):
        return random.choice(self.each).ask(method, path, body, timeout, **headers)

    def documents(self, query=""):
        end = time.monotonic() + READY
        while True:
            with contextlib.suppress(RuntimeError):
                return random.choice(self.each).documents(query)
            if time.monotonic() > end:
                raise RuntimeError("nobody can read the journal")

    def registers(self):
        """Each as its owner tells it."""
        best = {}
        for service in self.each:
            for one in service.registers():
                known = best.get(one["name"])
                if known is None or one["state"] in ("ready", "making") or known["state"] == "standby":
                    best[one["name"]] = one
        return list(best.values())


def services_of(frserver, plugin, folder, registers, relays, machines, settings):
    """One on each machine, whose registers are those of its place in `registers`; what else they want is told by these."""
    made = []
    for place, (own, relay, machine) in enumerate(zip(registers, relays, machines)):
        home = folder / f"service{place + 1}"
        home.mkdir()
        service = Service(frserver, plugin, home, own, relay.url(), settings(own))
        machine.take(service)
        made.append(service)
    return made
