"""How the page looks and sounds, by keyboard, on a telephone, in the dark, and with thousands of documents."""

import stage
from case import PanelTest, seconds, setUpModule  # noqa: F401, unittest looks for it
from pagelooks import PageLooks

MANY = 3000
KEPT = 2000  # exchanges, of the page


class Looks(PageLooks, PanelTest):
    def setUp(self):
        super().setUp()
        self.must("open-shift")
        self.must("sell", "sale.json")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.becomes(self.tape_label, "document 3")
        self.click("[data-card=faults] [aria-expanded]")
        self.register.ask("/faults", {"rules": [{"mode": "silence", "command": "FinishDocument", "nth": 1}]}, "PUT")
        stage.wait_for(lambda: self.find_all(".rules tr"))

    def test_contrast_and_names(self):
        self.has_contrast(("exchanges", "document"), "")
        grounds = "return getComputedStyle(document.body).backgroundColor"
        self.assertEqual("rgb(18, 22, 27)", self.page.execute_script(grounds))
        self.has_names({"button", "combobox", "tab", "listbox", "option"})

    def test_narrow(self):
        self.fits_a_telephone(("document", "exchanges"), "")

    def test_keyboard(self):
        tab, enter, up, right = "\ue004", "\ue007", "\ue013", "\ue014"
        self.find("body").send_keys(tab)
        self.walk_to("(e) => e.closest('[data-card=paper]') && e.dataset.value === 'out'")
        self.sees_focus()
        self.press(enter)
        self.becomes(lambda: self.card("paper"), "out")
        self.assertTrue(self.page.execute_script("return document.activeElement.dataset.value === 'out'"))
        self.walk_to("(e) => e.id === 'tape'")
        self.press(up)
        self.press(up)
        self.becomes(lambda: self.text("#document h3"), "Document 2")
        self.assertEqual("false", self.find("#follow").get_attribute("aria-pressed"))
        self.walk_to("(e) => e.id === 'tab-document'")
        self.press(right)
        self.assertTrue(self.find("#exchanges").is_displayed())

    def test_languages(self):
        known = self.has_all_words()
        for mode in self.register.ask("/faults/modes")["modes"]:
            if ":" not in mode["mode"]:
                self.assertIn(f"mode_{mode['mode']}".replace("answer-shape", "answer"), known)
        self.click("#language option[value=ru]")
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
        self.write("[name=what]", f"{MANY // 2}\n")
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
            self.write("[name=token]", token + "\n")
            self.becomes(lambda: self.text("#token-reason"), expected)
        self.connected()
        self.assertFalse(dialog())
        self.must("open-shift")
        self.becomes(self.tape_label, "document 2")
        self.page.refresh()
        self.connected()
        self.assertFalse(dialog())
