"""How the page of the service looks and sounds."""

import signal

import stage
from case import setUpModule  # noqa: F401, unittest looks for it
from pagelooks import PageLooks
from service_case import SALE, ServicePageTest


class Looks(PageLooks, ServicePageTest):
    def setUp(self):
        super().setUp()
        self.works()
        self.service.post(SALE, "shop:0001")
        self.service.post({"type": "cashOut", "sum": 90000}, "cash:0001")
        self.becomes(lambda: self.row("cash:0001"), "not issued")
        self.click("[data-id='cash:0001'] button")
        self.becomes(lambda: self.text("#document h3"), "Cash out")

    def test_contrast_and_names(self):
        self.has_contrast(("receipt", "document"), "service-")
        self.has_names({"button", "combobox", "tab", "searchbox"})

    def test_narrow(self):
        self.fits_a_telephone(("document", "receipt"), "service-")

    def test_keyboard(self):
        tab, enter, right = "\ue004", "\ue007", "\ue014"
        self.page.execute_script("document.activeElement.blur()")
        self.find("body").send_keys(tab)
        self.walk_to("(e) => e.dataset.do === 'x'")
        self.sees_focus()
        self.walk_to("(e) => e.closest('[data-id=\"shop:0001\"]')")
        # A row that comes above does not take the keyboard away.
        self.service.post({"type": "cashIn", "sum": 1}, "cash:0002")
        self.becomes(lambda: self.row("cash:0002"), "issued")
        self.assertTrue(self.page.execute_script("return document.activeElement.closest('[data-id=\"shop:0001\"]') !== null"))
        self.press(enter)
        self.becomes(lambda: self.text("#document h3"), "Sale")
        self.walk_to("(e) => e.id === 'tab-document'")
        self.press(right)
        self.assertTrue(self.find("#receipt").is_displayed())

    def test_languages(self):
        self.has_all_words()
        self.click("#language option[value=ru]")
        self.becomes(lambda: self.till(), "работает")
        self.becomes(lambda: self.row("cash:0001"), "не оформлен")
        self.assertEqual("ru", self.find("html").get_attribute("lang"))
        self.shoot("service-russian")

    def test_what_a_register_waits_for(self):
        """In the page's words, with what the service alone tells; in its own where it says something else."""
        script = """const done = arguments[1];
            import("/waiting.js").then(({ waitingNote }) => done(arguments[0].map(([waiting, waitingText]) => waitingNote({ waiting, waitingText }))))"""
        self.click("#language option[value=ru]")
        rows = {
            ("needsReview", "the register has documents 5 to 7 of fiscal drive 123 that this journal does not know (POST /v1/registers/a/accept)"):
                "с 5 по 7 накопителя 123:",
            ("needsReview", "the register has receipts of fiscal drive 123 that this journal does not know"): "чеки накопителя 123:",
            ("newDrive", "the fiscal drive is 456, and was 123: somebody has to say that it is meant (POST /v1/registers/a/accept)"):
                "накопитель 456, а был 123.",
            ("wrongRegister", "another register is at the line: its serial number is 00107, not 00108"): "заводской номер 00107, а не 00108.",
            ("wrongRegister", "another register is at the line: its tax number is 7707, not 7708"): "ИНН 7707, а не 7708.",
            ("wrongRegister", "another fiscal drive is in the register: 456, not 123"): "накопитель 456, а не 123.",
            ("wrongRegister", "the document shop:0001 was begun on fiscal drive 123; at the line is 456"): "shop:0001 начат на накопителе 123, а здесь 456.",
            ("wrongRegister", "the document shop:0001 was begun on fiscal drive 123; the register tells no number of its drive"): "номер своего касса не сообщает",
            ("journal", "journal postgresql://db: it is away: nothing is sold until the database answers again"): "недоступен: journal postgresql://db: it is away",
        }
        told = self.page.execute_async_script(script, list(rows))
        for expected, note in zip(rows.values(), told):
            self.assertIn(expected, note["text"])
            self.assertNotIn("POST", note["text"])
            self.assertEqual("ru", note["lang"])
        others = [("newDrive", "what no page knows (POST /v1/registers/a/accept)"), ("paper", "Нет бумаги"), (None, None)]
        told = self.page.execute_async_script(script, others)
        self.assertEqual([("what no page knows", "en"), ("Нет бумаги", "ru"), ("", "ru")], [(note["text"], note["lang"]) for note in told])


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
            self.write("[name=token]", given + "\n")
            self.becomes(lambda: self.text("#token-reason"), expected)
        self.connected()
        self.page.refresh()
        self.connected()
        self.assertFalse(dialog())
        self.becomes(self.till, "works")
        for role, expected in (("read", []), ("sell", ["x", "z"]), ("admin", ["x", "z", "hold"])):
            token = self.service.command("token", "add", role, "--role", role)
            read = self.service.log.read_text().count("tokens: read")
            self.service.process.send_signal(signal.SIGHUP)
            stage.wait_for(lambda: self.service.log.read_text().count("tokens: read") > read)  # pylint: disable=cell-var-from-loop
            self.page.execute_script("sessionStorage.setItem('spf-token', arguments[0])", token)
            self.page.refresh()
            self.connected()
            offered = [one.get_attribute("data-do") for one in self.find_all("[data-register=till1] [data-do]")
                       if one.is_displayed()]
            self.assertEqual(expected, offered)
