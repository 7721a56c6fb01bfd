// Rules by which the register misbehaves, and how often each did.

import { button, el } from "./dom.js";
import { Card, field, unfolding } from "./card.js";
import { head } from "./frames.js";
import { count, has, t } from "./i18n.js";

const WHICH = ["next", "nth", "each", "all"];

export class FaultCard {
    constructor(api, act) {
        Object.assign(this, { api, act, rules: [], modes: [] });
        this.table = el("div", { class: "rules" });
        this.form = el("form", { on: { submit: (event) => this.#submit(event) } });
        this.panel = el("section", { class: "panel" }, this.form, this.table);
        this.card = new Card("faults", el("div", { class: "choice" },
            this.#quick("loseNext", "lost"), this.#quick("silenceNext", "silence"),
            unfolding("more", "moreFaults", this.panel)));
        this.read();
    }

    #quick(key, mode) {
        return button(t(key), () => this.#add({ mode, nth: 1 }), { "data-fault": mode });
    }

    update({ faultRules }) {
        if (faultRules !== this.rules.length)
            this.read();
    }

    async read() {
        try {
            if (this.modes.length === 0)
                await this.#readModes();
            this.#show((await this.api.get("/faults")).rules);
        } catch {
            // The line is lost; the state is read anew with the next one.
        }
    }

    // A new list begins to count anew; rules that have done their work would do it again.
    #add(rule) {
        return this.#replace((rules) => [...rules.filter(({ over }) => !over), rule]);
    }

    #remove(rule) {
        const text = ruleText(rule);
        return this.#replace((rules) => {
            const gone = rules.findIndex((other) => ruleText(other) === text);
            return rules.filter((_, index) => index !== gone);
        });
    }

    // Another browser, or a test, may have changed the rules since they were shown.
    #replace(change) {
        return this.act(async () => {
            const { rules } = await this.api.get("/faults");
            const body = { rules: change(rules).map(({ fitting, hits, over, ...rule }) => rule) };
            this.#show((await (await this.api.put("/faults", body)).json()).rules);
        });
    }

    #clear() {
        return this.act(async () => {
            await this.api.remove("/faults");
            this.#show([]);
        });
    }

    #show(rules) {
        this.rules = rules;
        const hits = rules.reduce((sum, rule) => sum + rule.hits, 0);
        const isWaiting = rules.some(({ over }) => !over);
        this.card.set(rules.length ? t("faultsAre", { count: rules.length, hits }) : t("noFaults"),
            isWaiting ? "warn" : "");
        this.table.replaceChildren(...(rules.length ? [this.#ruleTable(), this.#clearButton()] : []));
    }

    #clearButton() {
        return button(t("faultClear"), () => this.#clear());
    }

    #ruleTable() {
        const columns = ["faultRule", "faultFitting", "faultHits", "faultState"];
        return el("table", {}, el("thead", {}, el("tr", {}, columns.map(head), el("td", {}))),
            el("tbody", {}, this.rules.map((rule) => this.#ruleRow(rule))));
    }

    #ruleRow(rule) {
        return el("tr", {}, el("th", { scope: "row" }, ruleText(rule)), el("td", {}, count(rule.fitting)),
            el("td", { class: "hits" }, count(rule.hits)), el("td", {}, t(rule.over ? "faultOver" : "faultInForce")),
            el("td", {}, button(t("faultRemove"), () => this.#remove(rule))));
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
            field("faultCommand", input("command")), field("faultField", input("field")),
            field("faultFieldValue", input("value")),
            field("faultProbability", number("probability", { min: "0", max: "1", step: "any" })),
            field("faultSeed", number("seed", { min: "0" })), field("faultLifetime", number("lifetime", { min: "1" })),
            el("button", {}, t("faultAdd")));
        this.#fit();
    }

    // Only what the choices above ask for can be filled in.
    #fit() {
        const { mode, argument, which, number: place } = this.form.elements;
        const wanted = this.modes.find((known) => known.mode === mode.value)?.argument ?? null;
        argument.closest("label").hidden = wanted === null;
        argument.required = wanted !== null;
        argument.previousSibling.textContent = t("faultArgument", { what: wanted ?? "" });
        place.disabled = which.value !== "nth" && which.value !== "each";
        place.closest("label").hidden = place.disabled;
    }

    #submit(event) {
        event.preventDefault();
        this.#add(ruleOf(Object.fromEntries(new FormData(this.form))));
    }
}

const input = (name) => el("input", { name, autocomplete: "off" });
const number = (name, attributes) => el("input", { type: "number", name, ...attributes });

// What the form says, as the interface takes it: what was left empty is left away.
export function ruleOf({ mode, argument, which, number: place, command, field: name, value, ...numbers }) {
    const given = Object.entries(numbers).filter(([, text]) => text !== "");
    return {
        mode: argument ? `${mode}:${argument}` : mode,
        ...{ next: { nth: 1 }, nth: { nth: Number(place) }, each: { each: Number(place) }, all: {} }[which],
        ...(command && { command }),
        ...(name && { field: { name, value } }),
        ...Object.fromEntries(given.map(([key, text]) => [key, Number(text)])),
    };
}

function modeText({ mode, protocols }) {
    const key = `mode_${mode}`;
    const only = protocols.length === 1 ? ` (${protocols[0]})` : "";
    return has(key) ? `${t(key)} (${mode})${only}` : `${mode}${only}`;
}

// The rule as one would write it.
function ruleText({ mode, command, field: part, nth, each, probability, seed, lifetime }) {
    return [mode, nth && `#${nth}`, each && `/${each}`, command, part && `${part.name}=${part.value}`,
        probability !== undefined && `p=${probability} (${seed})`,
        lifetime && `≤${lifetime}`].filter(Boolean).join(" ");
}
