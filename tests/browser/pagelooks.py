"""What holds of the looks and the sound of every page. Goes with a PanelTest."""

import re
from pathlib import Path

import stage

CONTRAST = Path(__file__).with_name("contrast.js").read_text(encoding="utf-8")
TAB = "\ue004"
NAMED = {"button", "textbox", "searchbox", "combobox", "spinbutton", "checkbox", "tab", "listbox", "option"}
WIDE = """
    return [...document.querySelectorAll("body *")].filter((element) => element.checkVisibility()
        && element.getBoundingClientRect().right > 361 && !element.closest("pre, .hidden"))
        .map((element) => element.outerHTML.slice(0, 200))"""
# The page's markup and all of its scripts, as the browser has loaded them.
SOURCES = """
    const done = arguments[0];
    const scripts = performance.getEntriesByType("resource").map(({ name }) => name).filter((name) => name.endsWith(".js"));
    Promise.all([location.href, ...scripts].map(async (name) => (await fetch(name)).text())).then(done, (e) => done([String(e)]))"""


class PageLooks:
    def has_contrast(self, tabs, name):
        """In the light, and then in the dark; with a screenshot of each."""
        for scheme in ("light", "dark"):
            self.emulate(scheme)
            for tab in tabs:
                self.open_tab(tab)
                looks = self.page.execute_script(CONTRAST)
                self.assertEqual(([], []), (looks["poor"], looks["poorPairs"]), scheme)
                self.assertGreater(looks["seen"], 50)
            self.shoot(name + scheme)

    def has_names(self, roles):
        """For all that can be worked; these are among it."""
        nodes = self.page.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
        found = [(node["role"]["value"], node["name"]["value"]) for node in nodes
                 if not node["ignored"] and node["role"]["value"] in NAMED]
        self.assertEqual([], [node for node in found if not node[1].strip()])
        self.assertLessEqual(roles, {role for role, _ in found})

    def fits_a_telephone(self, tabs, name):
        self.narrow(360)
        for tab in tabs:
            self.open_tab(tab)
            self.page.execute_script("document.querySelectorAll('details').forEach((d) => { d.open = true; })")
            self.assertEqual([], self.page.execute_script(WIDE))
            self.assertEqual(360, self.page.execute_script("return document.documentElement.scrollWidth"))
            self.shoot(f"{name}narrow-{tab}")

    def press(self, keys):
        stage.when_it_stands(lambda: self.page.switch_to.active_element.send_keys(keys))

    def walk_to(self, script):
        for _ in range(80):
            self.press(TAB)
            if self.page.execute_script(f"return (({script})(document.activeElement))"):
                return
        self.fail(f"the keyboard does not get to {script}")

    def sees_focus(self):
        outline = "return getComputedStyle(document.activeElement).outlineStyle"
        self.assertEqual("solid", self.page.execute_script(outline))

    def has_all_words(self):
        """In both languages; gives the keys."""
        texts = self.page.execute_async_script(
            "import('/words.js').then(({words}) => arguments[0](words), (e) => arguments[0](String(e)))")
        gaps = {language: {key: sorted(re.findall(r"{\w+}", text)) for key, text in words.items()}
                for language, words in texts.items()}
        self.assertEqual(gaps["en"], gaps["ru"])
        self.assertTrue(all(text.strip() for words in texts.values() for text in words.values()))
        used = set()
        for source in self.page.execute_async_script(SOURCES):
            used.update(re.findall(r'\bdata-t(?:-\w+)?"?[=:] ?"(\w+)"', source))
            used.update(re.findall(r'\b(?:t|head|field|section|answer)\("(\w+)"', source))
        self.assertGreater(len(used), 50)
        self.assertEqual(set(), used - gaps["en"].keys())
        return gaps["en"].keys()
