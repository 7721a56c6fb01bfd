"""What people do at the page while hosts sell."""

import stage
from case import EMULATOR, PanelTest, seconds, setUpModule  # noqa: F401, unittest looks for it


class Planned(PanelTest):
    options = ("--faults", "noise@2+,silence@100000")

    def test_faults_of_the_command_line(self):
        self.becomes(lambda: self.card("faults"), "rules 2, hits 0")
        self.click("[data-card=faults] [aria-expanded]")
        self.becomes(lambda: self.text(".rules"), "--faults noise@2+")
        self.must("status")
        stage.wait_for(lambda: int(self.text(".rules tr:last-child .hits") or 0) > 0)
        self.click(".rules > button")
        self.becomes(lambda: self.card("faults"), "none")
        self.assertEqual([], self.register.ask("/faults")["planned"])


class Work(PanelTest):
    def test_sale_appears_and_its_code_reads(self):
        self.connected()
        self.must("open-shift")
        self.must("sell", "sale.json")
        self.becomes(self.tape_label, "document 3", seconds(1))
        self.becomes(lambda: self.text("#document h3"), "Document 3", seconds(1))
        sign = self.register.ask("/documents/3")["fiscalSign"]
        stage.wait_for(lambda: any(f"&i=3&fp={sign}&" in code for code in stage.codes_in(self.shoot("sale"))))
        self.assertIn("сумма расчета", self.text("#document .tags").lower())
        self.click("#document details.exchange:last-of-type summary")
        for way in ("to the register", "to the host"):
            self.becomes(lambda: self.text("#document details.exchange:last-of-type"), way)
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
        self.open_tab("exchanges")
        self.click("#refused-only")
        self.becomes(lambda: self.text("#exchange-list"), "refused")
        self.shoot("paper-out")
        self.click("[data-card=paper] [data-value=in]")
        self.becomes(lambda: self.card("paper"), "in")
        self.must("sell", "sale.json")
        self.becomes(lambda: self.text("#glance"), "Paper: in")
        self.becomes(self.tape_label, "document 3")

    def test_paper_is_torn(self):
        self.must("open-shift")
        self.click("[data-card=paper] [data-value=nearEnd]")
        self.becomes(lambda: self.card("paper"), "lines left")
        self.host("sell", "sale.json")
        self.becomes(lambda: self.card("paper"), "out")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.becomes(lambda: self.text("#document .refusals"), "no paper")
        self.click("#document details.exchange:last-of-type summary")
        self.assertRegex(self.text("#document details.exchange:last-of-type"), "error.*document 3")
        self.emulate("dark")
        self.open_tab("exchanges")
        self.click("#refused-only")
        self.becomes(lambda: self.text("#exchange-list"), "answered with error")
        self.click("#exchange-list [role=option]:last-child")
        self.becomes(lambda: self.text("#exchange"), "no paper")
        self.shoot("torn")
        self.click("[data-card=paper] [data-value=in]")
        self.becomes(lambda: self.card("paper"), "in")
        self.must("status")  # with which a host lets it print on
        rest = "return [...document.querySelectorAll('.print')].filter((e) => e.ariaLabel.includes('document 3')).length"
        stage.wait_for(lambda: self.page.execute_script(rest) == 2)
        self.must("sell", "sale.json")
        self.becomes(self.tape_label, "document 4")

    def test_fault_is_hit_once(self):
        self.must("open-shift")
        self.click("[data-fault=lost]")
        self.becomes(lambda: self.card("faults"), "rules 1, hits 0")
        self.must("status")  # which is not what is to go wrong
        status, text = self.host("--exclusive", "yes", "sell", "sale.json")
        self.assertIn(status, (0, 3), text)  # issued, or issued although an answer was missing
        self.becomes(lambda: self.card("faults"), "rules 1, hits 1")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.becomes(lambda: self.text("#document details.exchange:last-of-type"), "fault: lost")
        self.shoot("lost")
        self.must("sell", "sale.json")
        self.click("[data-card=faults] [aria-expanded]")
        self.becomes(lambda: self.text(".rules"), "over")
        self.assertEqual("1", self.text(".rules .hits"))
        self.assertEqual(1, self.register.ask("/faults")["rules"][0]["hits"])
        self.click("[data-fault=silence]")  # which leaves the others as they are
        self.becomes(lambda: self.card("faults"), "rules 2, hits 1")

    def test_rules_by_form(self):
        self.click("[data-card=faults] [aria-expanded]")
        choose = lambda mode: self.click(f"[name=mode] [value='{mode}']")
        choose("busy")
        self.write("[name=argument]", "2")
        choose("noise")  # takes no number
        self.click("[name=which] [value=nth]")
        self.write("[name=number]", "7", anew=True)
        self.click("[name=storing]")
        self.find("[name=number]").submit()
        self.becomes(lambda: self.text(".rules"), "noise #7 storing")
        self.register.ask("/faults", {"rules": [{"mode": "cut"}, {"mode": "echo"}]}, "PUT")
        choose("late")
        self.assertFalse(self.find("[name=value]").is_enabled())
        self.write("[name=field]", "nosuch")
        self.write("[name=value]", "1")
        self.find("[name=number]").submit()
        self.becomes(lambda: self.text("#notices"), "field.name")
        self.write("[name=field]", "", anew=True)
        self.find("[name=number]").submit()
        self.becomes(lambda: self.text(".rules"), "late")
        self.assertEqual("", self.text("#notices"))
        modes = lambda: [rule["mode"] for rule in self.register.ask("/faults")["rules"]]
        self.assertEqual(["cut", "echo", "late"], modes())
        self.click(".rules tr:nth-child(2) button")
        stage.wait_for(lambda: len(self.find_all(".rules tbody tr")) == 2)
        self.assertEqual(["cut", "late"], modes())
        self.assertEqual("Remove", self.page.execute_script("return document.activeElement.textContent"))
        self.click(".rules > button")
        self.becomes(lambda: self.card("faults"), "none")
        self.assertEqual([], modes())

    def test_clock_makes_the_shift_too_long(self):
        self.must("open-shift")
        self.becomes(lambda: self.card("shift"), "open, no. 1")
        self.click("[data-card=clock] button:nth-of-type(2)")
        self.becomes(lambda: self.card("shift"), "more than 24 hours")
        self.click("[data-card=clock] [aria-expanded]")
        self.write("[name=hours]", "-1000\n", anew=True)
        self.becomes(lambda: self.text("#notices"), "before that of the last document")
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
        self.click("[data-card=cover] [data-value=false]", other)
        self.becomes(lambda: self.card("cover"), "shut")
        self.must("open-shift", register=1)
        self.click("#register option[value='2']")
        self.becomes(lambda: self.card("shift"), "open")
        self.becomes(self.tape_label, "document 2")
        self.becomes(lambda: self.card("shift", other), "закрыта")

    def test_restart(self):
        self.must("open-shift")
        self.must("sell", "sale.json")
        self.becomes(self.tape_label, "document 3")
        self.open_tab("exchanges")
        self.click("#exchange-list .row:last-child")
        self.becomes(lambda: self.text("#exchange h3"), "Exchange")
        self.open_tab("document")
        port = self.register.port
        self.register.stop()
        self.becomes(lambda: self.text("#connection"), "lost")
        self.register = stage.Register(EMULATOR, panel=port)
        self.connected()
        self.becomes(lambda: self.card("shift"), "closed")
        # What was shown of the other drive's documents and exchanges is not of this one.
        self.becomes(lambda: self.text("#document h3"), "Document 1")
        self.assertEqual("", self.text("#exchange"))
        self.must("open-shift")
        self.becomes(self.tape_label, "document 2")

    def test_documents_of_another_time_go(self):
        other = stage.browser()
        self.addCleanup(other.quit)
        other.get(self.register.url)
        self.must("open-shift")
        self.register.ask("/snapshots/open", method="PUT")
        self.must("sell", "sale.json")
        self.becomes(self.tape_label, "document 3")
        self.becomes(lambda: self.tape_label(other), "document 3")
        sign = self.register.ask("/documents/3")["fiscalSign"]
        self.click(".print:last-child")  # held, with its details
        self.becomes(lambda: self.text("#document"), sign)
        self.write("[name=what]", "\n", page=other)
        self.becomes(lambda: self.text("#found-list", other), sign)
        self.register.ask("/snapshots/open/restore", method="POST")
        for page in (self.page, other):
            self.becomes(lambda: self.text("#document h3", page), "Document 2")
        # The paper still hangs there, and leads to no document any more.
        stage.wait_for(lambda: self.tape_label() and "document" not in self.tape_label())
        self.becomes(lambda: self.text("#found-heading", other), "2")
        self.assertNotIn(sign, self.text("#found-list", other))
        self.must("sell", "sale.json")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.becomes(lambda: self.text("#document"), self.register.ask("/documents/3")["fiscalSign"])
        self.register.ask("/reset", method="POST")
        for page in (self.page, other):
            self.becomes(lambda: self.text("#document h3", page), "Document 1")
            self.assertEqual("", self.tape_label(page))
        self.page.refresh()
        self.connected()
        self.assertEqual("", self.tape_label())
        self.must("open-shift")
        self.becomes(self.tape_label, "document 2")

    def test_search(self):
        self.must("open-shift")
        self.must("sell", "sale.json")
        total = self.register.ask("/documents?number=3")["documents"][0]["total"]
        self.must("z-report")
        for what, expected in (("3", "КАССОВЫЙ ЧЕК"), (total.replace(".", ","), "КАССОВЫЙ ЧЕК"), ("бородинский", "3"),
                               (f"{total} ₽", "КАССОВЫЙ ЧЕК"), ("772100000", "КАССОВЫЙ ЧЕК"),
                               ("", "ЗАКРЫТИИ СМЕНЫ")):
            self.write("[name=what]", what + "\n", anew=True)
            self.becomes(lambda: self.text("#found-list").upper(), expected)
        self.click("#search option[value=sum]")
        self.write("[name=what]", "abc\n")
        self.becomes(lambda: self.text("#notices"), "such as 100.00")
        self.becomes(lambda: self.text("#found-heading"), "0")
        self.click("#search option[value=any]")
        self.write("[name=what]", "\n", anew=True)
        stage.wait_for(lambda: self.text("#notices") == "")
        self.click("#found-list [role=option]:nth-child(2)")
        self.becomes(lambda: self.text("#document h3"), "Document 3")
        self.click("#found-close")
        self.becomes(lambda: self.find("#follow").get_attribute("aria-pressed"), "false")
        held = """return [document.querySelector(".print[aria-selected=true]")?.ariaLabel ?? "",
            document.getElementById("tape").scrollTop]"""
        self.becomes(lambda: self.page.execute_script(held)[0], "document 3,")
        before = self.page.execute_script(held)
        self.must("open-shift")
        self.becomes(lambda: self.card("drive"), "5")
        stage.wait_for(lambda: self.find_all(".print[aria-setsize='4']"))
        self.assertEqual(before, self.page.execute_script(held))
        self.assertIn("Document 3", self.text("#document h3"))
