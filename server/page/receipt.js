// The form to try a receipt of one position.

import { button, el } from "./dom.js";
import { money, t } from "./i18n.js";
import { badge } from "./labels.js";
import { placeName } from "./places.js";

const TAXES = ["vat22", "vat20", "vat10", "vat7", "vat5", "vat0", "none"];
const SYSTEMS = ["osn", "usnIncome", "usnIncomeOutcome", "esn", "patent"];
const PAYMENTS = ["cash", "electronically"];

const kopecks = (roublesText) => Math.round(Number(roublesText) * 100);

function field(label, input) {
    return el("label", { class: "field" }, el("span", {}, t(label)), input);
}

function choice(name, keys) {
    return el("select", { name }, keys.map((key) => el("option", { value: key }, t(`${name}_${key}`))));
}

function number(name, value, step) {
    return el("input", { type: "number", name, value, step, min: step, required: true });
}

export class ReceiptForm {
    constructor(root, { check, sell, isOpen }) {
        Object.assign(this, { root, check, sell, isOpen, names: [] });
        this.outcome = el("div", { class: "outcome", role: "status", id: "outcome" });
    }

    // Registers, and the places of pools.
    setRegisters(names) {
        this.names = names;
        this.redraw();
    }

    redraw() {
        const kept = this.form ? Object.fromEntries(new FormData(this.form)) : {};
        this.form = this.#make();
        for (const [name, value] of Object.entries(kept))
            if (value && this.form.elements[name])
                this.form.elements[name].value = value;
        this.root.replaceChildren(this.form, this.outcome);
        this.show();
    }

    // Nothing is changed while nobody knows whether the service has it.
    show() {
        if (this.form)
            this.fields.disabled = this.isOpen(this.#register);
    }

    get #register() {
        return this.form.elements.register.value;
    }

    #make() {
        const name = el("input", { name: "name", value: "Пробный товар", required: true, lang: "ru" });
        this.fields = el("fieldset", {}, el("legend", { class: "hidden" }, t("tryReceipt")), el("div", { class: "fields" },
            field("register", el("select", { name: "register", required: true },
                this.names.map((register) => el("option", { value: register }, placeName(register))))),
            field("position", name), field("price", number("price", "1.00", "0.01")),
            field("quantity", number("quantity", "1", "0.001")), field("tax", choice("tax", TAXES)),
            field("system", choice("system", SYSTEMS)), field("payment", choice("payment", PAYMENTS)),
            field("operator", el("input", { name: "operator", autocomplete: "off", lang: "ru" }))),
        el("p", { class: "hint" }, t("trialHint")),
        el("div", { class: "buttons" },
            button(t("check"), () => this.#doWith(this.check), { name: "check" }),
            el("button", { name: "sell", "data-needs": "sell" }, t("sell"))));
        const submit = (event) => {
            event.preventDefault();
            this.#doWith(this.sell);
        };
        return el("form", { class: "trial", on: { submit } }, this.fields);
    }

    #doWith(action) {
        if (this.form.reportValidity())
            action(this.#register, this.#receipt());
    }

    #receipt() {
        const { name, price, quantity, tax, system, payment, operator } = Object.fromEntries(new FormData(this.form));
        const amount = Math.round(kopecks(price) * Number(quantity)) / 100;
        return {
            type: "sell",
            taxationType: system,
            ...(operator.trim() && { operator: { name: operator.trim() } }),
            items: [{ name, price: kopecks(price) / 100, quantity: Number(quantity), amount, tax: { type: tax } }],
            payments: [{ type: payment, sum: amount }],
        };
    }

    say(...content) {
        this.outcome.replaceChildren(...content.filter(Boolean));
    }

    showCheck({ errors, warnings }) {
        const isRight = errors.length === 0;
        this.say(el("p", { class: `state ${isRight ? "good" : "bad"}` }, t(isRight ? "checkedRight" : "checkedWrong")),
            findings(errors), findings(warnings));
    }

    showDocument(document) {
        this.say(el("p", {}, badge(document), " ", document.id),
            document.total !== null && document.total !== undefined && el("p", {}, money(document.total)),
            document.error && el("p", { class: "reason", lang: "ru" }, document.error.text));
    }

    showWrong({ title, detail, errors }) {
        this.say(el("p", { class: "state bad" }, detail || title), findings(errors ?? []));
    }
}

function findings(told) {
    return told.length > 0 && el("ul", { class: "findings" },
        told.map(({ path, text }) => el("li", {}, path ? `${path}: ${text}` : text)));
}
