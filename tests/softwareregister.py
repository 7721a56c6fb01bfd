"""spf-emulator as a process with its control interface, for what is written in Python: tests and measurements."""

import json
import re
import subprocess
import threading
import urllib.request


class SoftwareRegister:
    """On ports of its own, from construction to stop(). The options are those of the program; panel is the port of its
    control interface, 0 for any, None for none. url is where that is, lines are (host, port) of each register."""

    def __init__(self, program, *options, panel=0, folder=None):
        self.process = subprocess.Popen(
            [program, "--tcp", "0", *([] if panel is None else ["--panel", str(panel)]), "--quiet", *options], cwd=folder,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        # The ports are told before.
        self.log = []
        registers = int(options[options.index("--registers") + 1]) if "--registers" in options else 1
        awaited = registers if panel is None else registers + 1
        while sum(bool(re.search("(ready|panel) on ", line)) for line in self.log) < awaited:
            line = self.process.stdout.readline()
            assert line, f"spf-emulator ended: {''.join(self.log)}"
            self.log.append(line)
        # A pipe that nobody reads would stop it one day.
        threading.Thread(target=lambda: self.log.extend(self.process.stdout), daemon=True).start()
        said = "".join(self.log)
        self.url = None if panel is None else re.search(r"panel on (\S+)", said)[1]
        self.lines = [(host, int(port)) for host, port in re.findall(r"ready on tcp:(\S+):(\d+)", said)]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def stop(self):
        self.process.terminate()
        self.process.wait(20)

    def ask(self, path, body=None, method=None):
        """The answer to a request for a path behind the interface's version, None for an empty one."""
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(
            f"{self.url}v1{path}", data, {"Content-Type": "application/json"}, method=method)
        with urllib.request.urlopen(request, timeout=20) as answer:
            text = answer.read()
        return json.loads(text) if text else None

    def memory(self):
        """In MiB, as it is now."""
        with open(f"/proc/{self.process.pid}/smaps_rollup", encoding="ascii") as file:
            return int(re.search(r"Rss:\s+(\d+)", file.read())[1]) / 1024
