// Rules by which the register misbehaves, and how often each did.

import { Newest } from "./api.js";
import { button, el } from "./dom.js";
import { Card, field, unfolding } from "./card.js";
import { head } from "./frames.js";
import { count, has, t } from "./i18n.js";

const WHICH = ["next", "nth", "each", "all"];

export class FaultCard {
    constructor(api, act) {
        Object.assign(this, { api, act, newest: new Newest(), rules: [], planned: [], modes: [] });
        this.table = el("div", { class: "rules" });
        this.form = el("form", { on: { submit: (event) => this.#submit(event) } });
        this.panel = el("section", { class: "panel" }, this.form, this.table);
        this.card = new Card("faults", el("div", { class: "choice" },
            this.#quick("loseNext", "lost"), this.#quick("silenceNext", "silence"),
            unfolding("more", "moreFaults", this.panel)));
        this.read();
    }

    // A host asks for the state time and again; what is to go wrong is the sale.
    #quick(key, mode) {
        return button(t(key), () => this.#add({ mode, nth: 1, storing: true }), { "data-fault": mode });
    }

    update({ faultRules, plannedFaults }) {
        if (faultRules !== this.rules.length || plannedFaults !== this.planned.length)
            this.read();
    }

    async read() {
        try {
            if (this.modes.length === 0)
                await this.#readModes();
            await this.#take(this.api.get("/faults"));
        } catch {
            // The line is lost; the state is read anew with the next one.
        }
    }

    // The others go on counting.
    #add(rule) {
        return this.act(() => this.#take(told(this.api.post("/faults", { rules: [rule] }))));
    }

    // A new list begins to count anew; rules that have done their work would do it again.
    #remove(rule) {
        const text = ruleText(rule);
        return this.#replace((rules) => {
            const gone = rules.findIndex((other) => ruleText(other) === text);
            return rules.filter(({ over }, index) => index !== gone && !over);
        });
    }

    // Another browser, or a test, may have changed the rules since they were shown.
    #replace(change) {
        return this.act(async () => {
            const { rules } = await this.api.get("/faults");
            const body = { rules: change(rules).map(({ fitting, hits, over, ...rule }) => rule) };
            await this.#take(told(this.api.put("/faults", body)));
        });
    }

    #clear() {
        return this.act(async () => {
            await this.#take(this.api.remove("/faults").then(() => ({ rules: [], planned: [] })));
        });
    }

    async #take(answer) {
        const faults = await this.newest.of(answer);
        if (faults)
            this.#show(faults);
    }

    // Those that are planned were given with the program's start.
    #show({ rules, planned }) {
        const told = JSON.stringify([rules, planned]);
        // A button that is about to be pressed stays.
        if (told === this.told)
            return;
        Object.assign(this, { rules, planned, told });
        const all = [...planned, ...rules];
        const hits = all.reduce((sum, rule) => sum + rule.hits, 0);
        const isWaiting = rules.some(({ over }) => !over) || planned.some((fault) => !isPast(fault));
        this.card.set(all.length ? t("faultsAre", { count: all.length, hits }) : t("noFaults"),
            isWaiting ? "warn" : "");
        this.#renewTable(all.length ? [this.#ruleTable(), this.#clearButton()] : []);
    }

    // A keyboard stays where it was, as far as that is still there.
    #renewTable(content) {
        const place = [...this.table.querySelectorAll("button")].indexOf(document.activeElement);
        this.table.replaceChildren(...content);
        if (place >= 0)
            ([...this.table.querySelectorAll("button")].slice(0, place + 1).pop() ?? this.form.elements.mode)?.focus();
    }

    #clearButton() {
        return button(t("faultClear"), () => this.#clear());
    }

    #ruleTable() {
        const columns = ["faultRule", "faultFitting", "faultHits", "faultState"];
        return el("table", {}, el("thead", {}, el("tr", {}, columns.map(head), el("td", {}))),
            el("tbody", {}, this.planned.map(plannedRow), this.rules.map((rule) => this.#ruleRow(rule))));
    }

    #ruleRow(rule) {
        return ruleRow({ text: ruleText(rule), fitting: count(rule.fitting), ...rule },
            button(t("faultRemove"), () => this.#remove(rule)));
    }

    async #readModes() {
        this.modes = (await this.api.get("/faults/modes")).modes;
        this.#fillForm();
    }

    #fillForm() {
        const mode = el("select", { name: "mode", on: { change: () => this.#fit() } },
            this.modes.map((known) => el("option", { value: known.mode }, modeText(known))));
        const which = el("select", { name: "which", on: { change: () => this.#fit() } },
            WHICH.map((value) => el("option", { value }, t(`which_${value}`))));
        this.form.replaceChildren(field("faultMode", mode), field("faultArgument", input("argument")),
            field("faultWhich", which), field("faultNumber", number("number", { min: "1", value: "1", required: true })),
            field("faultCommand", input("command")), field("faultField", input("field", { on: { input: () => this.#fit() } })),
            field("faultFieldValue", input("value", { disabled: true, required: true })), field("faultStoring", check("storing")),
            field("faultProbability", number("probability", { min: "0", max: "1", step: "any" })),
            field("faultSeed", number("seed", { min: "0" })), field("faultLifetime", number("lifetime", { min: "1" })),
            el("button", {}, t("faultAdd")));
        this.#fit();
    }

    // Only what the choices above ask for can be filled in.
    #fit() {
        const { mode, argument, which, number: place, field: name, value } = this.form.elements;
        const wanted = this.modes.find((known) => known.mode === mode.value)?.argument ?? null;
        argument.disabled = wanted === null;
        argument.closest("label").hidden = argument.disabled;
        argument.required = !argument.disabled;
        argument.previousSibling.textContent = t("faultArgument", { what: wanted ?? "" });
        place.disabled = which.value !== "nth" && which.value !== "each";
        place.closest("label").hidden = place.disabled;
        value.disabled = name.value === "";
    }

    #submit(event) {
        event.preventDefault();
        this.#add(ruleOf(Object.fromEntries(new FormData(this.form))));
    }
}

const told = async (request) => (await request).json();
const input = (name, attributes) => el("input", { name, autocomplete: "off", ...attributes });
const check = (name) => el("input", { type: "checkbox", name });
const number = (name, attributes) => el("input", { type: "number", name, ...attributes });

// What the form says, as the interface takes it: what was left empty is left away.
export function ruleOf({ mode, argument, which, number: place, command, field: name, value, storing, ...numbers }) {
    const given = Object.entries(numbers).filter(([, text]) => text !== "");
    return {
        mode: argument ? `${mode}:${argument}` : mode,
        ...{ next: { nth: 1 }, nth: { nth: Number(place) }, each: { each: Number(place) }, all: {} }[which],
        ...(command && { command }),
        ...(name && { field: { name, value } }),
        ...(storing && { storing: true }),
        ...Object.fromEntries(given.map(([key, text]) => [key, Number(text)])),
    };
}

function modeText({ mode, protocols }) {
    const key = `mode_${mode}`;
    const only = protocols.length === 1 ? ` (${protocols[0]})` : "";
    return has(key) ? `${t(key)} (${mode})${only}` : `${mode}${only}`;
}

function ruleRow({ text, fitting, hits, over }, ...buttons) {
    return el("tr", {}, el("th", { scope: "row" }, text), el("td", {}, fitting),
        el("td", { class: "hits" }, count(hits)), el("td", {}, t(over ? "faultOver" : "faultInForce")),
        el("td", {}, buttons));
}

const isPast = ({ lasting, hits }) => !lasting && hits > 0;
const plannedRow = (fault) =>
    ruleRow({ text: `--faults ${fault.fault}`, fitting: "", hits: fault.hits, over: isPast(fault) });

// The rule as one would write it.
function ruleText({ mode, command, field: part, storing, nth, each, probability, seed, lifetime }) {
    return [mode, nth && `#${nth}`, each && `/${each}`, command, part && `${part.name}=${part.value}`,
        storing && t("faultStored"), probability !== undefined && `p=${probability} (${seed})`,
        lifetime && `≤${lifetime}`].filter(Boolean).join(" ");
}
