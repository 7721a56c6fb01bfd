#!/usr/bin/python3
"""The page of the software register in a real browser, and real hosts at its line.

panel.py EMULATOR FRCTL PLUGINS SOURCES SCREENSHOTS [TEST ...]"""

import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

import stage

EMULATOR, FRCTL, PLUGINS, SOURCES, SCREENSHOTS = sys.argv[1:6]
PAGE = Path(SOURCES, "emulator/panel/page")
CONTRAST = Path(__file__).with_name("contrast.js").read_text(encoding="utf-8")
MANY = 3000
# In which a change has to be seen; a build with sanitizers gets more.
SECOND = float(os.environ.get("FRSPF_SECOND", "1"))


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
        line = self.register.lines[register]
        done = subprocess.run(
            [FRCTL, "--plugin", PLUGINS, "--port", line, "--protocol", protocol, "--cashier", "Иванова А. П.",
             "--journal", f"{self.register.folder}/journal{register}", *arguments],
            capture_output=True, text=True, check=False, timeout=60, cwd=Path(SOURCES, "examples"))
        return done.returncode, done.stdout + done.stderr

    def must(self, *arguments, **where):
        status, text = self.host(*arguments, **where)
        self.assertEqual(0, status, text)

    def find(self, selector, page=None):
        return (page or self.page).find_element("css selector", selector)

    def find_all(self, selector):
        return self.page.find_elements("css selector", selector)

    def click(self, selector):
        stage.wait_for(lambda: self.find_all(selector))[0].click()

    def text(self, selector, page=None):
        """As it is seen; read at once, since the page may draw it anew at any time."""
        script = "return document.querySelector(arguments[0])?.innerText ?? ''"
        return (page or self.page).execute_script(script, selector)

    def card(self, name, page=None):
        return self.text(f"[data-card={name}] .state", page)

    def becomes(self, what, expected, seconds=10):
        """Waits until what() has the expected text in it; tells what it had where it never does."""
        try:
            stage.wait_for(lambda: expected in what(), seconds)
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


class Work(PanelTest):
    def test_sale_appears_and_its_code_reads(self):
        self.connected()
        self.must("open-shift")
        self.must("sell", "sale.json")
        self.becomes(self.tape_label, "document 3", SECOND)
        self.becomes(lambda: self.text("#document h3"), "Document 3", SECOND)
        sign = self.register.ask("/documents/3")["fiscalSign"]
        stage.wait_for(lambda: any(f"&i=3&fp={sign}&" in code for code in stage.codes_in(self.shoot("sale"))), 5)
        self.assertIn("сумма расчета", self.text("#document .tags").lower())
        self.click("#document details.exchange:last-of-type summary")
        self.assertIn("to the register", self.text("#document .frames"))
        foreign = "return performance.getEntriesByType('resource').map((r) => r.name)"
        for address in self.page.execute_script(foreign):
            self.assertTrue(address.startswith((self.register.url, "blob:" + self.register.url)), address)
        told = [line["message"] for line in self.page.get_log("browser") if self.register.url in line["message"]]
        self.assertEqual([], told)

    def test_paper_out_and_in(self):
        self.must("open-shift")
        self.click("[data-card=paper] [data-value=out]")
        self.becomes(lambda: self.card("paper"), "out")
        status, text = self.host("sell", "sale.json")
        self.assertNotEqual(0, status)
        self.assertRegex(text.lower(), "бумаг")
        self.click("#tab-exchanges")
        self.click("#refused-only")
        self.becomes(lambda: self.text("#exchange-list"), "refused")
        self.shoot("paper-out")
        self.click("[data-card=paper] [data-value=in]")
        self.becomes(lambda: self.card("paper"), "in")
        self.must("sell", "sale.json")
        self.becomes(lambda: self.text("#glance"), "Paper: in")
        self.assertIn("document", self.tape_label())

    def test_fault_is_hit_once(self):
        self.must("open-shift")
        self.click("[data-fault=lost]")
        self.becomes(lambda: self.card("faults"), "hits 0")
        self.must("status")
        self.becomes(lambda: self.card("faults"), "hits 1")
        self.must("sell", "sale.json")
        self.click("[data-card=faults] [aria-expanded]")
        self.becomes(lambda: self.text(".rules"), "over")
        self.assertEqual("1", self.text(".rules .hits"))
        self.assertEqual(1, self.register.ask("/faults")["rules"][0]["hits"])

    def test_clock_makes_the_shift_too_long(self):
        self.must("open-shift")
        self.becomes(lambda: self.card("shift"), "open, no. 1")
        self.click("[data-card=clock] button:nth-of-type(2)")
        self.becomes(lambda: self.card("shift"), "more than 24 hours")
        status, text = self.host("sell", "sale.json")
        self.assertNotEqual(0, status)
        self.assertRegex(text.lower(), "24|смен")
        self.must("z-report")
        self.becomes(lambda: self.card("shift"), "closed")

    def test_two_browsers_and_two_registers(self):
        other = stage.browser(language="ru")
        self.addCleanup(other.quit)
        other.get(self.register.url)
        self.becomes(lambda: self.text("h1", other), "Программная касса")
        self.click("[data-card=cover] [data-value=true]")
        self.becomes(lambda: self.card("cover", other), "открыта")
        self.find("[data-card=cover] [data-value=false]", other).click()
        self.becomes(lambda: self.card("cover"), "shut")
        self.must("open-shift", register=1)
        self.find("#register option[value='2']").click()
        self.becomes(lambda: self.card("shift"), "open")
        self.becomes(self.tape_label, "document 2")
        self.becomes(lambda: self.card("shift", other), "закрыта")

    def test_restart(self):
        self.must("open-shift")
        self.must("sell", "sale.json")
        self.becomes(self.tape_label, "document 3")
        port = self.register.port
        self.register.stop()
        self.becomes(lambda: self.text("#connection"), "lost")
        self.register = stage.Register(EMULATOR, panel=port)
        self.connected()
        self.becomes(lambda: self.card("shift"), "closed")
        self.must("open-shift")
        self.becomes(self.tape_label, "document 2")

    def test_search(self):
        self.must("open-shift")
        self.must("sell", "sale.json")
        total = self.register.ask("/documents?number=3")["documents"][0]["total"]
        self.must("z-report")
        for what, expected in (("3", "КАССОВЫЙ ЧЕК"), (total.replace(".", ","), "КАССОВЫЙ ЧЕК"), ("бородинский", "3"),
                               ("", "ЗАКРЫТИИ СМЕНЫ")):
            field = self.find("[name=what]")
            field.clear()
            field.send_keys(what + "\n")
            self.becomes(lambda: self.text("#found-list").upper(), expected)
        self.click("#found-list [role=option]:nth-child(2)")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.click("#found-close")
        self.becomes(lambda: self.text("#follow") and self.find("#follow").get_attribute("aria-pressed"), "false")


class Looks(PanelTest):
    def setUp(self):
        super().setUp()
        self.must("open-shift")
        self.must("sell", "sale.json")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.click("[data-card=faults] [aria-expanded]")
        self.click("[data-fault=silence]")
        stage.wait_for(lambda: self.find_all(".rules tr"))

    def test_contrast_and_names(self):
        for scheme in ("light", "dark"):
            self.emulate(scheme)
            for tab in ("exchanges", "document"):
                self.click(f"#tab-{tab}")
                looks = self.page.execute_script(CONTRAST)
                self.assertEqual([], looks["poor"], scheme)
                self.assertGreater(looks["seen"], 50)
            self.shoot(scheme)
        grounds = "return getComputedStyle(document.body).backgroundColor"
        self.assertEqual("rgb(18, 22, 27)", self.page.execute_script(grounds))
        nodes = self.page.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
        named = {"button", "textbox", "searchbox", "combobox", "spinbutton", "checkbox", "tab", "listbox", "option"}
        found = [(node["role"]["value"], node["name"]["value"]) for node in nodes
                 if not node["ignored"] and node["role"]["value"] in named]
        self.assertEqual([], [node for node in found if not node[1].strip()])
        self.assertLessEqual({"button", "combobox", "tab", "listbox", "option"}, {role for role, _ in found})

    def test_narrow(self):
        self.narrow(360)
        for tab in ("document", "exchanges"):
            self.click(f"#tab-{tab}")
            self.page.execute_script("document.querySelectorAll('details').forEach((d) => { d.open = true; })")
            wide = self.page.execute_script("""
                return [...document.querySelectorAll("body *")].filter((element) => element.checkVisibility()
                    && element.getBoundingClientRect().right > 361 && !element.closest("pre, .hidden"))
                    .map((element) => element.outerHTML.slice(0, 200))""")
            self.assertEqual([], wide)
            width = "return document.documentElement.scrollWidth"
            self.assertEqual(360, self.page.execute_script(width))
            self.shoot(f"narrow-{tab}")

    def test_keyboard(self):
        press = lambda keys: self.page.switch_to.active_element.send_keys(keys)
        tab, enter, up = "\ue004", "\ue007", "\ue013"

        def walk_to(script):
            for _ in range(80):
                press(tab)
                if self.page.execute_script(f"return (({script})(document.activeElement))"):
                    return
            self.fail(f"the keyboard does not get to {script}")

        self.find("body").send_keys(tab)
        walk_to("(e) => e.closest('[data-card=paper]') && e.dataset.value === 'out'")
        outline = "return getComputedStyle(document.activeElement).outlineStyle"
        self.assertEqual("solid", self.page.execute_script(outline))
        press(enter)
        self.becomes(lambda: self.card("paper"), "out")
        self.assertTrue(self.page.execute_script("return document.activeElement.dataset.value === 'out'"))
        walk_to("(e) => e.id === 'tape'")
        press(up)
        press(up)
        self.becomes(lambda: self.text("#document h3"), "Document 2")
        self.assertEqual("false", self.find("#follow").get_attribute("aria-pressed"))
        walk_to("(e) => e.id === 'tab-document'")
        press("\ue014")
        self.assertTrue(self.find("#exchanges").is_displayed())

    def test_languages(self):
        texts = self.page.execute_async_script(
            "import('/words.js').then(({words}) => arguments[0](words), (e) => arguments[0](String(e)))")
        gaps = {language: {key: sorted(re.findall(r"{\w+}", text)) for key, text in words.items()}
                for language, words in texts.items()}
        self.assertEqual(gaps["en"], gaps["ru"])
        self.assertTrue(all(text.strip() for words in texts.values() for text in words.values()))
        used = re.findall(r'data-t(?:-\w+)?="(\w+)"', (PAGE / "index.html").read_text())
        for script in PAGE.glob("*.js"):
            used += re.findall(r'\b(?:t|head)\("(\w+)"', script.read_text())
        self.assertEqual(set(), set(used) - gaps["en"].keys())
        for mode in self.register.ask("/faults/modes")["modes"]:
            if ":" not in mode["mode"]:
                self.assertIn(f"mode_{mode['mode']}".replace("answer-shape", "answer"), gaps["en"])
        self.find("#language option[value=ru]").click()
        self.becomes(lambda: self.card("shift"), "открыта")
        self.assertEqual("ru", self.find("html").get_attribute("lang"))
        self.shoot("russian")


class Long(PanelTest):
    def test_thousands_of_documents(self):
        self.must("open-shift", protocol="XML")
        self.must("sell", "sale.json", protocol="XML")
        sale = next(e["number"] for e in self.register.ask("/exchanges")["exchanges"] if e["document"] == 3)
        self.register.repeat_over_xml(sale, MANY)
        self.becomes(self.tape_label, f"document {MANY + 3}", 3 * SECOND)
        self.assertLess(self.page.execute_script("return document.querySelectorAll('*').length"), 1500)
        frames = self.page.execute_async_script("""
            const [done, tape] = [arguments[0], document.getElementById("tape")];
            const times = [];
            let [before, step] = [performance.now(), 40];
            const next = (now) => {
                times.push(now - before);
                before = now;
                tape.scrollTop = tape.scrollHeight * step / 40;
                return step-- > 0 ? requestAnimationFrame(next) : done(times.sort((a, b) => a - b));
            };
            requestAnimationFrame(next);""")
        self.assertLess(frames[len(frames) // 2], 100)
        first = "return document.querySelector('.print')?.ariaLabel ?? ''"
        self.becomes(lambda: self.page.execute_script(first), "Print 1,", 3 * SECOND)
        self.assertLess(self.page.execute_script("return document.querySelectorAll('*').length"), 1500)
        self.click("#follow")
        self.must("sell", "sale.json", protocol="XML")
        self.becomes(self.tape_label, f"document {MANY + 4}", SECOND)


class Guarded(PanelTest):
    options = ("--panel-token", "a-token-for-this-test")

    def test_token_is_asked_once(self):
        dialog = lambda: self.find("#token-dialog").is_displayed()
        stage.wait_for(dialog)
        for token, expected in (("another-token-altogether", "refused"), ("a-token-for-this-test", "")):
            self.find("[name=token]").send_keys(token + "\n")
            self.becomes(lambda: self.text("#token-reason"), expected)
        self.connected()
        self.assertFalse(dialog())
        self.must("open-shift")
        self.becomes(self.tape_label, "document 2")
        self.page.refresh()
        self.connected()
        self.assertFalse(dialog())


if __name__ == "__main__":
    stage.demand_browser()
    Path(SCREENSHOTS).mkdir(parents=True, exist_ok=True)
    unittest.main(argv=[sys.argv[0], *sys.argv[6:]], verbosity=2)
