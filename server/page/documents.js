// The documents of the journal, the last one first, and the search.

import { byId, el, setText } from "./dom.js";
import { t } from "./i18n.js";
import { badge, documentTitle, moment, poolName } from "./labels.js";
import { placeName, placeQuery } from "./places.js";

const PAGE = 50;
const MOST = 500;
const STATES = ["queued", "running", "issued", "notIssued", "unknown"];

export class Documents {
    constructor(api, { onChoose, onError }) {
        Object.assign(this, { api, onChoose, onError, rows: new Map(), limit: PAGE, asked: 0, chosen: null });
        this.form = byId("search");
        this.form.addEventListener("submit", (event) => this.#search(event));
        for (const select of this.form.querySelectorAll("select"))
            select.addEventListener("change", (event) => this.#search(event));
        byId("more").addEventListener("click", () => this.#more());
    }

    setRegisters(names) {
        this.#options("register", names.map((name) => [name, placeName(name, poolName)]), "allRegisters");
        this.form.register.closest("label").hidden = names.length < 2;
    }

    redraw() {
        this.#options("state", STATES.map((state) => [state, t(`state_${state}`)]), "allStates");
        const first = this.form.register.options[0];
        if (first)
            first.textContent = t("allRegisters");
        this.rows.clear();
        this.#draw(this.documents ?? []);
    }

    // An answer may be overtaken by that of a later question.
    async read() {
        const question = ++this.asked;
        const { documents, next } = await this.api.get("/documents", { ...this.#query(), limit: this.limit });
        if (question !== this.asked)
            return;
        byId("more").hidden = next === null || this.limit >= MOST;
        this.#draw(documents);
    }

    mark(id) {
        this.chosen = id;
        for (const [of, { button }] of this.rows)
            button.setAttribute("aria-current", String(of === id));
    }

    #query() {
        const { text, register, state } = this.form;
        const given = { text: text.value.trim(), ...placeQuery(register.value), state: state.value };
        return Object.fromEntries(Object.entries(given).filter(([, value]) => value));
    }

    #options(name, options, all) {
        const select = this.form[name];
        const { value } = select;
        select.replaceChildren(el("option", { value: "" }, t(all)),
            ...options.map(([key, text]) => el("option", { value: key }, text)));
        select.value = options.some(([key]) => key === value) ? value : "";
    }

    #search(event) {
        event.preventDefault();
        this.limit = PAGE;
        this.read().catch(this.onError);
    }

    #more() {
        this.limit = Math.min(this.limit + PAGE, MOST);
        this.read().catch(this.onError);
    }

    // Rows that stay are not moved, so that the keyboard stays where it is.
    #draw(documents) {
        this.documents = documents;
        const list = byId("documents");
        const wanted = documents.map((document) => this.#row(document));
        const stay = new Set(wanted);
        for (const row of [...list.children])
            if (!stay.has(row))
                row.remove();
        wanted.forEach((row, place) => list.children[place] === row || list.insertBefore(row, list.children[place] ?? null));
        this.rows = new Map(documents.map(({ id }) => [id, this.rows.get(id)]));
        byId("none").hidden = documents.length > 0;
        setText(byId("none"), t(Object.keys(this.#query()).length ? "noneFound" : "noDocuments"));
    }

    #row(document) {
        const row = this.rows.get(document.id) ?? this.#newRow(document.id);
        const told = JSON.stringify(document);
        if (row.told !== told) {
            row.told = told;
            row.button.replaceChildren(...cells(document));
        }
        return row.item;
    }

    #newRow(id) {
        const choose = () => this.onChoose(id);
        const button = el("button", { type: "button", "aria-current": String(id === this.chosen), on: { click: choose } });
        const row = { button, item: el("li", { "data-id": id }, button), told: "" };
        this.rows.set(id, row);
        return row;
    }
}

function cells(document) {
    return [el("span", { class: "time" }, moment(document.accepted)), el("strong", {}, documentTitle(document)),
        badge(document), el("span", { class: "small" }, document.register ?? (document.pool ? poolName(document.pool) : "")),
        el("span", { class: "small id" }, document.id)];
}
