"""A register, its hosts and browsers for one test; all of them end with it."""

import json
import os
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import urllib.error
import urllib.request
from pathlib import Path

NO_BROWSER = 77  # CTest takes it for skipped

try:
    from selenium import webdriver
    from selenium.common.exceptions import StaleElementReferenceException
    from selenium.webdriver.chrome.service import Service
except ImportError:
    webdriver = None

CHROMIUM, CHROMEDRIVER = "/usr/bin/chromium", "/usr/bin/chromedriver"


def demand_browser():
    missing = [name for name, path in (("chromium", CHROMIUM), ("chromium-driver", CHROMEDRIVER))
               if not os.path.exists(path)]
    missing += ["python3-selenium"] if webdriver is None else []
    missing += ["zbar-tools"] if shutil.which("zbarimg") is None else []
    if missing:
        print(f"the page is not tested here, these packages are missing: {' '.join(missing)}")
        sys.exit(1 if os.environ.get("CI") else NO_BROWSER)


class Register:
    """spf-emulator with two registers on ports of its own."""

    def __init__(self, program, *options, panel=0):
        self.folder = tempfile.mkdtemp()
        self.log = Path(self.folder, "log")
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen(
                [program, "--tcp", "0", "--registers", "2", "--quiet", "--ofd", "--panel", str(panel), *options],
                stdin=subprocess.DEVNULL, stdout=log, stderr=log, cwd=self.folder)
        url = wait_for(lambda: re.search(r"panel on (\S+)", self.log.read_text()) or self.must_run(), 20)
        self.url = url.group(1)
        self.port = int(re.search(r":(\d+)/", self.url).group(1))
        self.lines = re.findall(r"ready on (\S+)", self.log.read_text())

    def must_run(self):
        assert self.process.poll() is None, self.log.read_text()

    def stop(self):
        self.process.terminate()
        self.process.wait(20)
        shutil.rmtree(self.folder, ignore_errors=True)

    def ask(self, path, body=None, method=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.url + "v1" + path, data, {"Content-Type": "application/json"},
                                         method=method)
        with urllib.request.urlopen(request, timeout=20) as answer:
            text = answer.read()
        return json.loads(text) if text else None

    def repeat_over_xml(self, number, times):
        """Sends a request over XML again and again, under ids of its own."""
        frames = self.ask(f"/exchanges/{number}")["frames"]
        text = bytes.fromhex(next(frame["bytes"] for frame in frames if frame["direction"] == "toRegister"))
        host, port = self.lines[0].removeprefix("tcp:").rsplit(":", 1)
        with socket.create_connection((host, int(port)), timeout=20) as line:
            for _ in range(times):
                line.sendall(with_fresh_id(text))
                answer = b""
                while b"</ArmResponse>" not in answer:
                    answer += line.recv(65536)
                assert b"<Result>0</Result>" in answer, answer.decode("cp1251")


def with_fresh_id(request):
    fresh = os.urandom(16).hex()
    return re.sub(rb"(<RequestID>)([^<]*)(</RequestID>)",
                  lambda m: m[1] + fresh[:len(m[2])].encode() + m[3], request)


def browser(size=(1280, 1000), language="en"):
    options = webdriver.ChromeOptions()
    options.binary_location = CHROMIUM
    for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--hide-scrollbars",
                     f"--lang={language}", f"--window-size={size[0]},{size[1]}"):
        options.add_argument(argument)
    options.add_experimental_option("prefs", {"intl.accept_languages": language})
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service(CHROMEDRIVER), options=options)


def wait_for(condition, seconds=20):
    """What the condition gives once it is something; looked at again and again."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        assert time.monotonic() < end, "waited in vain"
        time.sleep(0.02)


def codes_in(picture):
    """The texts of the QR codes and barcodes in a picture."""
    done = subprocess.run(["zbarimg", "-q", "--raw", picture], capture_output=True, text=True, check=False)
    return done.stdout.split()
