"""A browser at the page of a software register, and hosts at its line."""

import os
import subprocess
import sys
import unittest
from pathlib import Path

import stage

AWAIT_CLICK = """
    window.isPressed = false;
    arguments[0].addEventListener("click", () => { window.isPressed = true; }, { capture: true, once: true });"""
EMULATOR, FRCTL, PLUGINS, SOURCES, SCREENSHOTS = sys.argv[1:6]


def seconds(quiet):
    """So many on a quiet machine, in which a change has to be seen; one with other work, now or in the last minute, gets more."""
    load, _, _, running, _ = Path("/proc/loadavg").read_text(encoding="ascii").split()
    return quiet * max(1, float(load) / os.cpu_count(), int(running.split("/")[0]) / os.cpu_count())


def setUpModule():
    PanelTest.page = stage.browser()
    unittest.addModuleCleanup(PanelTest.page.quit)


class PanelTest(unittest.TestCase):
    options = ()

    def setUp(self):
        self.register = stage.Register(EMULATOR, *self.options)
        self.addCleanup(lambda: self.register.stop())
        self.page.get(self.register.url)

    def host(self, *arguments, register=0, protocol="HEX"):
        """frctl; gives its exit status and all that it said."""
        line = "tcp:{}:{}".format(*self.register.lines[register])
        done = subprocess.run(
            [FRCTL, "--plugin", PLUGINS, "--port", line, "--protocol", protocol, "--cashier", "Иванова А. П.",
             "--journal", f"{self.register.folder}/journal{register}", *arguments],
            capture_output=True, text=True, check=False, timeout=60, cwd=Path(SOURCES, "examples"))
        return done.returncode, done.stdout + done.stderr

    def must(self, *arguments, **where):
        status, text = self.host(*arguments, **where)
        self.assertEqual(0, status, text)

    def find(self, selector, page=None):
        """Once it is there. What the page may draw anew is clicked and written by its selector."""
        return stage.wait_for(lambda: self.find_all(selector, page), what=selector)[0]

    def find_all(self, selector, page=None):
        return (page or self.page).find_elements("css selector", selector)

    def click(self, selector, page=None):
        """Again if what stands above has grown meanwhile, and the mouse met something else."""
        script = (page or self.page).execute_script

        def pressed():
            element = self.find(selector, page)
            # One is chosen without a mouse.
            is_option = element.tag_name == "option"
            script(AWAIT_CLICK, element)
            element.click()
            return is_option or script("return window.isPressed")

        stage.wait_for(lambda: stage.when_it_stands(pressed), what=f"a click on {selector}")

    def write(self, selector, keys, anew=False, page=None):
        """Anew: in the place of what stands there."""
        def written():
            field = self.find(selector, page)
            if anew:
                field.clear()
            field.send_keys(keys)

        stage.when_it_stands(written)

    def open_tab(self, name):
        """Again if what stands above has grown meanwhile, and the mouse met something else."""
        def opened():
            self.click(f"#tab-{name}")
            return self.find(f"#tab-{name}").get_attribute("aria-selected") == "true"

        stage.wait_for(opened)

    def text(self, selector, page=None):
        """As it is seen; read at once, since the page may draw it anew at any time."""
        script = "return document.querySelector(arguments[0])?.innerText ?? ''"
        return (page or self.page).execute_script(script, selector)

    def card(self, name, page=None):
        return self.text(f"[data-card={name}] .state", page)

    def becomes(self, what, expected, limit=20):
        """Waits until what() has the expected text in it; tells what it had where it never does."""
        try:
            stage.wait_for(lambda: expected in what(), limit)
        except AssertionError:
            self.fail(f"{expected!r} is not in {what()!r}")

    def connected(self, page=None):
        self.becomes(lambda: self.text("#connection", page), "connected")

    def tape_label(self, page=None):
        """Of the last print that the page has drawn."""
        script = "return [...document.querySelectorAll('.print')].pop()?.ariaLabel ?? ''"
        return (page or self.page).execute_script(script)

    def shoot(self, name, selector=None):
        path = str(Path(SCREENSHOTS, f"{name}.png"))
        (self.find(selector).screenshot if selector else self.page.save_screenshot)(path)
        return path

    def emulate(self, scheme):
        command = "Emulation.setEmulatedMedia"
        self.page.execute_cdp_cmd(command, {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
        self.addCleanup(self.page.execute_cdp_cmd, command, {"features": []})

    def narrow(self, width):
        self.page.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                  {"width": width, "height": 780, "deviceScaleFactor": 1, "mobile": True})
        self.addCleanup(self.page.execute_cdp_cmd, "Emulation.clearDeviceMetricsOverride", {})
