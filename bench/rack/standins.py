"""Registers that take their time for a receipt: software registers, and such as have no line but stand in a worker's memory."""

import selectors
import socket
import threading

from softwareregister import SoftwareRegister

# Of a receipt, print included, which nobody can make shorter.
RECEIPT_SECONDS = 3


class Measured:
    """r1, r2 ..."""

    def __init__(self, number, port):
        self.name = f"r{number}"
        self.port = port

    @property
    def section(self):
        """Of the service's configuration."""
        return (f"[register {self.name}]\nport = tcp:127.0.0.1:{self.port}\nprotocol = HEX\nexclusive = yes\n"
                "cashier = Иванова А. П.\nallow-test-drive = yes\nstart-before = 86400\n")


class SoftwareRegisters:
    """A program with so many of them, which think for that time before they answer that a receipt is closed."""

    name = "software registers"

    def __init__(self, build, count):
        self.plugin = build / "plugins"
        self._program = SoftwareRegister(str(build / "bin" / "spf-emulator"), "--registers", str(count))
        self.registers = [Measured(number + 1, port) for number, (_, port) in enumerate(self._program.lines)]
        for number in range(1, count + 1):
            self._program.ask(f"/registers/{number}/faults", {"rules": [{"mode": f"slow:{RECEIPT_SECONDS}", "command": "22"}]}, "PUT")

    def close(self):
        self._program.stop()


class StandIns:
    """A true worker has rackstandin for its plugin, which waits. That a port can be opened, somebody listens there, and nothing is
    ever said."""

    name = "stand-ins"

    def __init__(self, build, count):
        self.plugin = build / "standin"
        self._selector = selectors.DefaultSelector()
        self._is_over = False
        self.registers = []
        for number in range(1, count + 1):
            listener = socket.create_server(("127.0.0.1", 0))
            self._selector.register(listener, selectors.EVENT_READ, self._accept)
            self.registers.append(Measured(number, listener.getsockname()[1]))
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()

    def _accept(self, listener):
        connection, _ = listener.accept()
        self._selector.register(connection, selectors.EVENT_READ, self._drop)

    def _drop(self, connection):
        if not connection.recv(4096):
            self._selector.unregister(connection)
            connection.close()

    def _run(self):
        while not self._is_over:
            for key, _ in self._selector.select(0.5):
                key.data(key.fileobj)

    def close(self):
        self._is_over = True
        self._thread.join()
        for key in list(self._selector.get_map().values()):
            key.fileobj.close()
        self._selector.close()
