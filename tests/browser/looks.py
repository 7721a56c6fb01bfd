"""How the page looks and sounds, by keyboard, on a telephone, in the dark, and with thousands of documents."""

import re
from pathlib import Path

import stage
from case import SOURCES, PanelTest, seconds, setUpModule  # noqa: F401, unittest looks for it

PAGE = Path(SOURCES, "emulator/panel/page")
CONTRAST = Path(__file__).with_name("contrast.js").read_text(encoding="utf-8")
MANY = 3000
KEPT = 2000  # exchanges, of the page


class Looks(PanelTest):
    def setUp(self):
        super().setUp()
        self.must("open-shift")
        self.must("sell", "sale.json")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.click("[data-card=faults] [aria-expanded]")
        self.register.ask("/faults", {"rules": [{"mode": "silence", "command": "FinishDocument", "nth": 1}]}, "PUT")
        stage.wait_for(lambda: self.find_all(".rules tr"))

    def test_contrast_and_names(self):
        for scheme in ("light", "dark"):
            self.emulate(scheme)
            for tab in ("exchanges", "document"):
                self.open_tab(tab)
                looks = self.page.execute_script(CONTRAST)
                self.assertEqual(([], []), (looks["poor"], looks["poorPairs"]), scheme)
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
            self.open_tab(tab)
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
        self.becomes(self.tape_label, f"document {MANY + 3}", seconds(3))
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
        self.assertLess(frames[len(frames) // 2], seconds(100))
        first = "return document.querySelector('.print')?.ariaLabel ?? ''"
        self.becomes(lambda: self.page.execute_script(first), "Print 1,", seconds(3))
        self.assertLess(self.page.execute_script("return document.querySelectorAll('*').length"), 1500)
        self.find("[name=what]").send_keys(f"{MANY // 2}\n")
        self.click("#found-list [role=option]")
        self.click("#found-close")
        chosen = "return document.querySelector('.print[aria-selected=true]')?.ariaLabel ?? ''"
        self.becomes(lambda: self.page.execute_script(chosen), f"document {MANY // 2},")
        self.click("#follow")
        self.must("sell", "sale.json", protocol="XML")
        self.becomes(self.tape_label, f"document {MANY + 4}", seconds(1))

    def test_thousands_of_exchanges(self):
        self.must("open-shift", protocol="XML")
        self.must("sell", "sale.json", protocol="XML")
        self.open_tab("exchanges")
        exchanges = self.register.ask("/exchanges")["exchanges"]
        asking = next(exchange["number"] for exchange in exchanges if exchange["document"] is None)
        self.register.repeat_over_xml(asking, MANY)
        last = self.register.ask("/state")["lastExchange"]
        to_end = lambda: self.find("#exchange-list").send_keys("\ue010")
        self.becomes(lambda: to_end() or self.text("#exchange h3"), f"Exchange {last}:")
        self.page.execute_script("document.getElementById('exchange-list').scrollTop = 44 * 1000")
        self.click("#exchange-list #exchange-1003")
        chosen = "return document.querySelector('#exchange-list [aria-selected=true]')"
        place = lambda: self.page.execute_script(f"{chosen}.getBoundingClientRect().top")
        title, before = self.text("#exchange h3"), place()
        self.assertIn(str(last - KEPT + 1 + 1003), title)
        self.must("status", protocol="XML")
        more = self.register.ask("/state")["lastExchange"] - last
        self.becomes(lambda: self.page.execute_script(f"{chosen}.id"), f"exchange-{1003 - more}")
        self.assertEqual((title, before), (self.text("#exchange h3"), place()))


class Guarded(PanelTest):
    options = ("--panel-token", "a-token-for-this-test")

    def test_token_is_asked_once(self):
        dialog = lambda: self.find("#token-dialog").is_displayed()
        stage.wait_for(dialog)
        self.assertIn("--panel-token", self.text("#token-dialog"))
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
