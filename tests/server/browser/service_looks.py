"""How the page of the service looks and sounds."""

import re
from pathlib import Path

import stage
from case import SOURCES, setUpModule  # noqa: F401, unittest looks for it
from service_case import SALE, ServicePageTest

PAGE = Path(SOURCES, "server/page")
CONTRAST = Path(SOURCES, "tests/browser/contrast.js").read_text(encoding="utf-8")
NAMED = {"button", "textbox", "searchbox", "combobox", "spinbutton", "tab", "listitem"}


class Looks(ServicePageTest):
    def setUp(self):
        super().setUp()
        self.works()
        self.service.post(SALE, "shop:0001")
        self.service.post({"type": "cashOut", "sum": 90000}, "cash:0001")
        self.becomes(lambda: self.row("cash:0001"), "not issued")
        self.click("[data-id='cash:0001'] button")
        self.becomes(lambda: self.text("#document h3"), "Cash out")

    def test_contrast_and_names(self):
        for scheme in ("light", "dark"):
            self.emulate(scheme)
            for tab in ("receipt", "document"):
                self.click(f"#tab-{tab}")
                looks = self.page.execute_script(CONTRAST)
                self.assertEqual(([], []), (looks["poor"], looks["poorPairs"]), scheme)
                self.assertGreater(looks["seen"], 50)
            self.shoot(f"service-{scheme}")
        nodes = self.page.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
        found = [(node["role"]["value"], node["name"]["value"]) for node in nodes
                 if not node["ignored"] and node["role"]["value"] in NAMED - {"listitem"}]
        self.assertEqual([], [node for node in found if not node[1].strip()])
        self.assertLessEqual({"button", "combobox", "tab", "searchbox"}, {role for role, _ in found})

    def test_narrow(self):
        self.narrow(360)
        for tab in ("document", "receipt"):
            self.click(f"#tab-{tab}")
            self.page.execute_script("document.querySelectorAll('details').forEach((d) => { d.open = true; })")
            wide = self.page.execute_script("""
                return [...document.querySelectorAll("body *")].filter((element) => element.checkVisibility()
                    && element.getBoundingClientRect().right > 361 && !element.closest("pre, .hidden"))
                    .map((element) => element.outerHTML.slice(0, 200))""")
            self.assertEqual([], wide)
            self.assertEqual(360, self.page.execute_script("return document.documentElement.scrollWidth"))
            self.shoot(f"service-narrow-{tab}")

    def test_keyboard(self):
        press = lambda keys: self.page.switch_to.active_element.send_keys(keys)

        def walk_to(script):
            for _ in range(80):
                press("\ue004")
                if self.page.execute_script(f"return (({script})(document.activeElement))"):
                    return
            self.fail(f"the keyboard does not get to {script}")

        self.page.execute_script("document.activeElement.blur()")
        self.find("body").send_keys("\ue004")
        walk_to("(e) => e.dataset.do === 'x'")
        self.assertEqual("solid", self.page.execute_script("return getComputedStyle(document.activeElement).outlineStyle"))
        walk_to("(e) => e.closest('[data-id=\"shop:0001\"]')")
        # A row that comes above does not take the keyboard away.
        self.service.post({"type": "cashIn", "sum": 1}, "cash:0002")
        self.becomes(lambda: self.row("cash:0002"), "issued")
        self.assertTrue(self.page.execute_script("return document.activeElement.closest('[data-id=\"shop:0001\"]') !== null"))
        press("\ue007")
        self.becomes(lambda: self.text("#document h3"), "Sale")
        walk_to("(e) => e.id === 'tab-document'")
        press("\ue014")
        self.assertTrue(self.find("#receipt").is_displayed())

    def test_languages(self):
        texts = self.page.execute_async_script(
            "import('/words.js').then(({words}) => arguments[0](words), (e) => arguments[0](String(e)))")
        gaps = {language: {key: sorted(re.findall(r"{\w+}", text)) for key, text in words.items()}
                for language, words in texts.items()}
        self.assertEqual(gaps["en"], gaps["ru"])
        self.assertTrue(all(text.strip() for words in texts.values() for text in words.values()))
        used = re.findall(r'data-t(?:-\w+)?="(\w+)"', (PAGE / "index.html").read_text(encoding="utf-8"))
        for script in PAGE.glob("*.js"):
            used += re.findall(r'\b(?:t|field|answer)\("(\w+)"', script.read_text(encoding="utf-8"))
        self.assertEqual(set(), set(used) - gaps["en"].keys())
        self.find("#language option[value=ru]").click()
        self.becomes(lambda: self.till(), "работает")
        self.becomes(lambda: self.row("cash:0001"), "не оформлен")
        self.assertEqual("ru", self.find("html").get_attribute("lang"))
        self.shoot("service-russian")


class Guarded(ServicePageTest):
    def test_token_is_asked_once(self):
        self.works()
        token = self.service.command("token", "add", "look", "--role", "read")
        self.service.stop()
        self.service = type(self.service)(self.register)
        self.page.get(self.service.url)
        dialog = lambda: self.find("#token-dialog").is_displayed()
        stage.wait_for(dialog)
        for given, expected in (("another-token-altogether", "refused"), (token, "")):
            self.find("[name=token]").send_keys(given + "\n")
            self.becomes(lambda: self.text("#token-reason"), expected)
        self.connected()
        self.page.refresh()
        self.connected()
        self.assertFalse(dialog())
        self.click("[data-register=till1] [data-do=hold]")
        self.becomes(lambda: self.text("#notices"), "token does not allow")
