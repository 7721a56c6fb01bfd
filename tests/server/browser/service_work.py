"""What people see and do at the page while documents are made."""

import os
import re
import signal

import stage
from case import seconds, setUpModule  # noqa: F401, unittest looks for it
from service_case import SALE, Service, ServicePageTest


# Answers from that path are kept from the page, with their text, until they may go.
HELD_UP = """
    const [fetched, path] = [window.fetch, arguments[0]];
    window.held = [];
    window.fetch = async (url, options) => {
        const answer = await fetched(url, options);
        if (String(url) === path) {
            const text = await answer.clone().text();
            await new Promise((go) => window.held.push({ text, go }));
        }
        return answer;
    };"""
LET_GO = "window.held.splice(0).forEach(({go}) => go())"
JOURNAL_AWAY = """
    const fetched = window.fetch;
    const problem = { type: "journal", title: "The journal cannot be used", detail: "the database does not answer" };
    window.isAway = true;
    window.fetch = async (url, options) => window.isAway && String(url).startsWith("/v1/documents")
        ? new Response(JSON.stringify(problem), { status: 503 }) : fetched(url, options);"""


class Work(ServicePageTest):
    def test_sale_appears(self):
        self.connected()
        self.works()
        self.service.post({"type": "openShift"}, "shift:0001")
        self.becomes(lambda: self.till(), "open since")
        self.service.post(SALE, "shop:0001")
        self.becomes(lambda: self.row("shop:0001"), "Sale", seconds(1))
        self.becomes(lambda: self.row("shop:0001"), "issued")
        self.assertIn("305.23 ₽", self.row("shop:0001"))
        self.becomes(lambda: self.till(), "Sale, 305.23 ₽, no. 1 of shift 1")
        self.click("[data-id='shop:0001'] button")
        for expected in ("Sale", "Хлеб Бородинский", "305.23", "Attempt 1"):
            self.becomes(lambda: self.text("#document"), expected)
        self.click("#document details:first-of-type summary")
        drawn = "const picture = document.querySelector('#document .picture img'); return picture?.naturalWidth ?? 0"
        stage.wait_for(lambda: self.page.execute_script(drawn) > 200)
        self.shoot("service-picture", "#document")
        # Open for the next document, and nothing for one that has none.
        self.service.post(SALE, "shop:0002")
        self.becomes(lambda: self.row("shop:0002"), "issued")
        self.click("[data-id='shop:0002'] button")
        stage.wait_for(lambda: "shop:0002" in (self.page.execute_script(
            "return document.querySelector('#document .picture img')?.alt") or ""))
        self.click("[data-id='shift:0001'] button")
        self.becomes(lambda: self.text("#document h3"), "Opening")
        self.assertEqual([], self.find_all("#document .picture"))
        foreign = "return performance.getEntriesByType('resource').map((r) => r.name)"
        for address in self.page.execute_script(foreign):
            self.assertTrue(address.removeprefix("blob:").startswith(self.service.url), address)
        told = [line["message"] for line in self.page.get_log("browser") if self.service.url in line["message"]]
        self.assertEqual([], told)

    def test_paper_out_and_in(self):
        self.works()
        self.service.post({"type": "openShift"}, "shift:0001")
        self.becomes(lambda: self.row("shift:0001"), "issued")
        self.register.ask("/paper", {"state": "out"}, "PUT")
        self.service.post(SALE, "shop:0001")
        self.becomes(lambda: self.till(), "waiting: paper")
        self.becomes(lambda: self.row("shop:0001"), "waiting: paper")
        self.shoot("service-paper")
        self.register.ask("/paper", {"state": "in"}, "PUT")
        self.becomes(lambda: self.row("shop:0001"), "issued")
        self.becomes(lambda: self.till(), "works")

    def test_reports(self):
        self.works()
        self.service.post({"type": "openShift"}, "shift:0001")
        self.becomes(lambda: self.till(), "open since")
        self.click("[data-register=till1] [data-do=x]")
        self.becomes(lambda: self.text("#document h3"), "X-report")
        self.becomes(lambda: self.text("#document h3"), "issued")
        for answer, expected in (("no", "open since"), ("yes", "Shift\nclosed")):
            self.click("[data-register=till1] [data-do=z]")
            self.click(f"#sure-dialog [value={answer}]")
            self.becomes(lambda: self.till(), expected)
        self.becomes(lambda: self.text("#documents li"), "Z-report")

    def test_opened_while_the_journal_is_away(self):
        script = self.page.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": JOURNAL_AWAY})
        self.addCleanup(self.page.execute_cdp_cmd, "Page.removeScriptToEvaluateOnNewDocument", script)
        self.page.get(self.service.url)
        for language, told in (("en", "the journal cannot be used"), ("ru", "журнал недоступен")):
            self.click(f"#language option[value={language}]")
            self.becomes(lambda: self.text("#connection"), told)
        self.page.execute_script("window.isAway = false")
        self.becomes(lambda: self.text("#connection"), "на связи")

    def test_pause_and_withdraw(self):
        self.works()
        self.click("[data-register=till1] [data-do=hold]")
        self.becomes(lambda: self.till(), "paused")
        self.service.post(SALE, "shop:0001")
        self.service.post(SALE, "shop:0002")
        self.becomes(lambda: self.till(), "Queue\n2, since")
        self.click("[data-id='shop:0001'] button")
        self.click("#document [data-do=withdraw]")
        self.becomes(lambda: self.row("shop:0001"), "withdrawn")
        self.click("[data-register=till1] [data-do=hold]")
        self.becomes(lambda: self.row("shop:0002"), "issued")
        self.assertEqual(1, len([one for one in self.register.ask("/documents")["documents"] if one["word"] == "sell"]))

    def test_trial_receipt(self):
        self.works()
        self.click("#tab-receipt")
        self.fill("name", "Проба страницы")
        self.fill("price", "12.50")
        self.fill("quantity", "3")
        self.click("#receipt [value=none]")
        self.click("#receipt [name=check]")
        self.becomes(lambda: self.text("#outcome"), "Nothing is wrong")
        # What has become of it is told before it was taken.
        self.page.execute_script(HELD_UP, "/v1/registers/till1/documents")
        self.click("#receipt [name=sell]")
        self.becomes(self.till, "Sale, 37.50 ₽")
        self.page.execute_script(LET_GO)
        self.becomes(lambda: self.text("#outcome"), "issued")
        self.assertIn("37.50", self.text("#outcome"))
        self.assertEqual("Проба страницы", self.page.execute_script("return document.querySelector('#receipt [name=name]').value"))

    def test_pool(self):
        self.works()
        self.works("till2")
        pool = lambda: self.text("[data-pool=webshop]")
        for expected in ("pool webshop", "till1: works", "till2: works", "Queue\n0"):
            self.becomes(pool, expected)
        self.becomes(self.till, "Pools\nwebshop")
        for name in ("till1", "till2"):
            self.click(f"[data-register={name}] [data-do=hold]")
            self.becomes(pool, f"{name}: paused")
        self.click("#tab-receipt")
        self.click("#receipt [value='pool:webshop']")
        self.fill("operator", "Иванова А. П.")
        self.click("#receipt [name=check]")
        self.becomes(lambda: self.text("#outcome"), "Nothing is wrong")
        self.click("#receipt [name=sell]")
        self.becomes(pool, "Queue\n1, since")
        self.click("#search [value='pool:webshop']")
        self.becomes(lambda: self.text("#documents"), "pool webshop")
        self.shoot("service-pool")
        self.click("#documents button")
        self.becomes(lambda: self.text("#document"), "Move to till1")
        self.assertNotIn("Move to pool", self.text("#document"))
        self.click("#document [data-do=move]")
        self.becomes(lambda: self.text("#document"), "Move to pool webshop")
        self.click("#document [data-do=move]:last-of-type")
        self.becomes(pool, "Queue\n1, since")
        self.click("[data-register=till2] [data-do=hold]")
        self.becomes(lambda: self.text("#outcome"), "issued")
        self.becomes(lambda: self.text("#documents"), "till2")
        self.becomes(pool, "Queue\n0")

    def test_same_id_after_a_lost_answer(self):
        self.works()
        self.connected()
        self.click("#tab-receipt")
        os.kill(self.service.process.pid, signal.SIGKILL)
        self.service.process.wait(20)
        self.click("#receipt [name=sell]")
        self.becomes(lambda: self.text("#unanswered"), "sent again as page:")
        told = self.text("#unanswered").split(" as ")[1].rstrip(".")
        self.assertFalse(self.find("#receipt [name=sell]").is_enabled())
        self.service = Service(self.register, port=self.service.port)
        self.becomes(lambda: self.row(told), "issued", 60)
        self.becomes(lambda: self.text("#outcome"), "issued")
        self.assertEqual("", self.text("#unanswered"))
        self.assertTrue(self.find("#receipt [name=sell]").is_enabled())
        self.assertEqual([told], [one["id"] for one in self.service.ask("/documents")["documents"] if one["kind"] == "sell"])

    def test_search(self):
        self.works()
        self.works("till2")
        for number, register in enumerate(("till1", "till2", "till1"), 1):
            self.service.post({"type": "cashIn", "sum": 100 * number}, f"cash:000{number}", register)
        self.becomes(lambda: self.row("cash:0003"), "issued")
        self.becomes(lambda: self.row("cash:0002"), "issued")
        script = "return [...document.querySelectorAll('#documents li')].map((e) => e.dataset.id)"
        # Each register has opened its shift, too.
        ids = lambda: [one for one in self.page.execute_script(script) if one.startswith("cash:")]
        for control, value, expected in (("text", "0002\n", ["cash:0002"]), ("text", "nothing\n", []),
                                         ("text", "\n", ["cash:0003", "cash:0002", "cash:0001"]),
                                         ("register", "till2", ["cash:0002"]), ("state", "queued", [])):
            if control == "text":
                self.write("#search [name=text]", value, anew=True)
            else:
                self.click(f"#search [name={control}] [value={value}]")
            stage.wait_for(lambda: ids() == expected, what=expected)
        self.assertIn("Nothing was found", self.text("#none"))

    def test_more(self):
        self.works()
        self.click("[data-register=till1] [data-do=hold]")
        self.becomes(self.till, "paused")
        for number in range(60):
            self.service.post({"type": "cashIn", "sum": 1}, f"cash:{number:04}")
        rows = lambda: len(self.find_all("#documents li"))
        stage.wait_for(lambda: rows() == 50)
        self.click("#more")
        stage.wait_for(lambda: rows() == 60)
        self.assertFalse(self.find("#more").is_displayed())
        # What happens below the first page is seen, and new ones do not take its place.
        self.service.ask("/documents/cash:0002", method="DELETE")
        self.becomes(lambda: self.row("cash:0002"), "withdrawn")
        self.service.post({"type": "cashIn", "sum": 1}, "cash:last")
        self.becomes(lambda: self.row("cash:last"), "waiting")
        self.assertEqual(61, rows())
        self.assertIn("withdrawn", self.row("cash:0002"))


    def test_answer_that_comes_late_takes_nothing_back(self):
        self.connected()
        self.page.execute_script(HELD_UP, "/v1/registers")
        self.service.post(SALE, "shop:0001")
        held = "return window.held.some(({text}) => text.includes(arguments[0]))"
        stage.wait_for(lambda: self.page.execute_script(held, '"id":"shop:0001"'))
        self.service.ask("/registers/till1/pause", {})
        self.becomes(self.till, "paused")
        self.page.execute_script(LET_GO)
        self.becomes(self.till, "Sale, 305.23 ₽")
        self.assertIn("paused", self.till())


class Persons(ServicePageTest):
    def make_unknown(self, number):
        """A print that the register does not count, ended in its middle: nobody can be asked about it."""
        self.service.post({"type": "openShift"}, "shift:0001")
        self.becomes(lambda: self.row("shift:0001"), "issued")
        self.register.ask("/faults", {"rules": [{"mode": "silence", "command": "PrintShiftCurrentTotals", "nth": 1}]}, "PUT")
        begin = self.register.ask("/state")["lastEvent"]
        self.service.post({"type": "xReport"}, number)
        self.assertTrue(self.register.ask(f"/wait?event=exchange&command=PrintShiftCurrentTotals&timeout=15&after={begin}"))
        self.service.process.kill()
        self.service.process.wait(20)
        self.register.ask("/faults", method="DELETE")
        self.service = Service(self.register, port=self.service.port)
        stage.wait_for(lambda: self.find_all(f"[data-unknown='{number}']"), 60)

    def test_unknown_is_resolved(self):
        self.make_unknown("xrep:0001")
        self.becomes(lambda: self.row("xrep:0001"), "unknown")
        self.shoot("service-unknown")
        self.write("[data-unknown='xrep:0001'] [name=note]", "на ленте его нет")
        # What somebody types stays when other things happen.
        self.service.post({"type": "cashIn", "sum": 5}, "cash:0001")
        self.becomes(lambda: self.row("cash:0001"), "issued")
        self.write("[data-unknown='xrep:0001'] [name=note]", "\n")
        self.becomes(lambda: self.row("xrep:0001"), "not issued: a person said so")
        stage.wait_for(lambda: not self.find("#attention").is_displayed())
        self.assertEqual("на ленте его нет", self.service.ask("/documents/xrep:0001")["note"])

    def test_unknown_is_on_the_tape(self):
        self.make_unknown("xrep:0001")
        number = "[data-unknown='xrep:0001'] [name=documentNumber]"
        self.write(number, "0\n")  # which none has
        self.assertTrue(self.find("#attention").is_displayed())
        self.write(number, "117\n", anew=True)
        self.becomes(lambda: self.row("xrep:0001"), "no. 117")
        self.becomes(lambda: self.row("xrep:0001"), "issued")
        stage.wait_for(lambda: not self.find("#attention").is_displayed())
        document = self.service.ask("/documents/xrep:0001")
        self.assertEqual(("issued", 117, "127.0.0.1"), tuple(document[name] for name in ("state", "documentNumber", "resolvedBy")))

    def test_sold_behind_the_service(self):
        self.works()
        self.service.post(SALE, "shop:0001")
        self.becomes(lambda: self.row("shop:0001"), "issued")
        self.service.stop()
        self.must("--exclusive", "no", "sell", "sale.json")
        self.service = Service(self.register, port=self.service.port)
        self.service.post(SALE, "shop:0002")
        self.becomes(lambda: self.text("[data-review=till1]"), "documents that the journal does not know")
        self.becomes(lambda: self.row("shop:0002"), "waiting")
        # In the page's words, with the numbers and without the way of callers of the interface.
        for language, told in (("ru", r"есть документ \d+ накопителя 9999\d{12}"),
                               ("en", r"has document \d+ of fiscal drive 9999\d{12}: look at its tape whether")):
            self.click(f"#language option[value={language}]")
            for place in (lambda: self.text("[data-review=till1]"), self.till):
                stage.wait_for(lambda: re.search(told, place()), what=told)  # pylint: disable=cell-var-from-loop
                self.assertNotIn("POST", place())
        self.shoot("service-review")
        self.write("[data-review=till1] [name=note]", "\n")  # says nothing
        self.assertEqual("needsReview", self.service.ask("/registers/till1")["waiting"])
        self.write("[data-review=till1] [name=note]", "продано с frctl, сверено с лентой\n")
        self.becomes(lambda: self.row("shop:0002"), "issued")
        self.becomes(self.till, "works")
        stage.wait_for(lambda: not self.find("#attention").is_displayed())
        self.assertIn("accepted till1 as it is: продано с frctl", self.service.log.read_text())

    def test_register_that_left_the_configuration(self):
        self.service.ask("/registers/till2/pause", {})
        self.service.post(SALE, "shop:0001", "till2")
        self.service.stop()
        del self.register.lines[1:]
        self.service = Service(self.register, self.service.port)
        self.becomes(lambda: self.text("#attention"), "documents that wait for it: 1")
        self.works()
        self.connected()
        self.page.execute_script("new MutationObserver(() => document.body.dataset.lost = 1)"
                                 ".observe(document.querySelector('#connection'), { attributes: true })")
        self.click("[data-register=till1] [data-do=hold]")
        self.becomes(self.till, "paused")
        self.click("[data-id='shop:0001'] button")
        self.becomes(lambda: self.text("#document"), "there is no such register any more")
        self.click("#document [data-do=withdraw]")
        self.becomes(lambda: self.row("shop:0001"), "withdrawn")
        self.becomes(lambda: str(len(self.find_all("[data-missing]"))), "0")
        self.assertEqual([], self.find_all("[data-lost]"), "events were followed all the time")

    def test_moved_to_another_register(self):
        self.works()
        self.works("till2")
        self.click("[data-register=till1] [data-do=hold]")
        self.becomes(self.till, "paused")
        self.service.post(SALE, "shop:0001")
        self.click("[data-id='shop:0001'] button")
        self.becomes(lambda: self.text("#document"), "Move to till2")
        self.click("#document [data-do=move]")
        self.becomes(lambda: self.row("shop:0001"), "till2")
        self.becomes(lambda: self.row("shop:0001"), "issued")
        self.becomes(lambda: self.till("till2"), "Sale, 305.23 ₽")
        self.becomes(self.till, "Queue\n0")
        self.assertEqual([], self.find_all("#document [data-do=move]"))
