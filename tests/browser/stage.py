"""A register, its hosts and browsers for one test; all of them end with it."""

import os
import re
import shutil
import socket
import subprocess
import sys
import tempfile
import time
import urllib.parse
from pathlib import Path

sys.path.append(str(Path(__file__).resolve().parent.parent))
from softwareregister import SoftwareRegister  # noqa: E402, it stands in the folder above

NO_BROWSER = 77  # CTest takes it for skipped

try:
    from selenium import webdriver
    from selenium.common.exceptions import (ElementClickInterceptedException, ElementNotInteractableException,
                                            StaleElementReferenceException)
    from selenium.webdriver.chrome.service import Service
except ImportError:
    webdriver = None
else:
    # The page was about to draw anew what somebody reached for, or something stood in the way.
    PASSING = (ElementClickInterceptedException, ElementNotInteractableException, StaleElementReferenceException)

CHROMIUM, CHROMEDRIVER = "/usr/bin/chromium", "/usr/bin/chromedriver"


def demand_browser():
    missing = [name for name, path in (("chromium", CHROMIUM), ("chromium-driver", CHROMEDRIVER))
               if not os.path.exists(path)]
    missing += ["python3-selenium"] if webdriver is None else []
    missing += ["zbar-tools"] if shutil.which("zbarimg") is None else []
    if missing:
        print(f"the page is not tested here, these packages are missing: {' '.join(missing)}")
        sys.exit(1 if os.environ.get("CI") else NO_BROWSER)


class Register(SoftwareRegister):
    """Two of them in one program, which the OFD takes documents from."""

    def __init__(self, program, *options, panel=0):
        self.folder = tempfile.mkdtemp()
        super().__init__(program, "--registers", "2", "--ofd", *options, panel=panel, folder=self.folder)
        self.port = urllib.parse.urlsplit(self.url).port

    def stop(self):
        super().stop()
        shutil.rmtree(self.folder, ignore_errors=True)

    def repeat_over_xml(self, number, times):
        """Sends a request over XML again and again, under ids of its own."""
        frames = self.ask(f"/exchanges/{number}")["frames"]
        text = bytes.fromhex(next(frame["bytes"] for frame in frames if frame["direction"] == "toRegister"))
        with socket.create_connection(self.lines[0], timeout=20) as line:
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


def wait_for(condition, seconds=20, what="what the condition wants"):
    """What the condition gives once it is something; looked at again and again."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        assert time.monotonic() < end, f"waited in vain for {what}"
        time.sleep(0.02)


def when_it_stands(work, seconds=20):
    """What the work gives; begun again as long as the page moves under it."""
    end = time.monotonic() + seconds
    while True:
        try:
            return work()
        except PASSING:
            if time.monotonic() > end:
                raise


def codes_in(picture):
    """The texts of the QR codes and barcodes in a picture."""
    done = subprocess.run(["zbarimg", "-q", "--raw", picture], capture_output=True, text=True, check=False)
    return done.stdout.split()
