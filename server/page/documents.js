// The documents of the journal, the last one first, and the search.

import { Newest } from "./api.js";
import { byId, el, setText } from "./dom.js";
import { money, t } from "./i18n.js";
import { badge, documentTitle, moment } from "./labels.js";
import { documentPlaceName, placeName, placeQuery } from "./places.js";

const PAGE = 50;
// A page that stays open for days does not grow with each document.
const MOST = 2000;
const STATES = ["queued", "running", "issued", "notIssued", "unknown"];

export class Documents {
    constructor(api, { onChoose, onError }) {
        Object.assign(this, { api, onChoose, onError, rows: new Map(), documents: [], next: null, hasMore: false, searches: 0,
            newest: new Newest(), chosen: null });
        this.form = byId("search");
        this.form.addEventListener("submit", (event) => this.#search(event));
        for (const select of this.form.querySelectorAll("select"))
            select.addEventListener("change", (event) => this.#search(event));
        byId("more").addEventListener("click", () => this.#more().catch(this.onError));
    }

    setRegisters(names) {
        this.#options("register", names.map((name) => [name, placeName(name)]), "allRegisters");
        this.form.register.closest("label").hidden = names.length < 2;
    }

    redraw() {
        this.#options("state", STATES.map((state) => [state, t(`state_${state}`)]), "allStates");
        const first = this.form.register.options[0];
        if (first)
            first.textContent = t("allRegisters");
        this.rows.clear();
        this.#draw(this.documents);
    }

    // The first page anew; what was shown below it stays.
    async read() {
        const { searches } = this;
        const first = await this.newest.of(this.#page());
        if (first && searches === this.searches)
            this.#show(this.hasMore ? joined(first, this) : first);
    }

    // What has become of one, also below the first page, where it is not read anew.
    note({ id, state, reason, register, documentNumber }) {
        const known = this.documents.find((document) => document.id === id);
        if (known)
            Object.assign(known, { state, reason, register, documentNumber, waiting: null });
    }

    mark(id) {
        this.chosen = id;
        for (const [of, { button }] of this.rows)
            button.setAttribute("aria-current", String(of === id));
    }

    #page(cursor = null) {
        return this.api.get("/documents", { ...this.#query(), limit: PAGE, ...(cursor && { cursor }) });
    }

    #show({ documents, next }) {
        this.hasMore &&= documents.length <= MOST;
        this.next = next;
        byId("more").hidden = next === null;
        this.#draw(documents);
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
        Object.assign(this, { documents: [], next: null, hasMore: false, searches: this.searches + 1 });
        this.read().catch(this.onError);
    }

    // Where the answer before has ended; a search of a long journal may have found nothing up to there.
    async #more() {
        const { searches } = this;
        // From now on: a first page that is read meanwhile would leave a gap above what comes.
        this.hasMore = true;
        const { documents, next } = await this.#page(this.next);
        if (searches !== this.searches)
            return;
        const shown = new Set(this.documents.map(({ id }) => id));
        this.#show({ documents: [...this.documents, ...documents.filter(({ id }) => !shown.has(id))], next });
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

// The first page as it is now, and what stood behind its last document before. When that was not shown there is a
// gap between them: then the rest begins with the first page.
function joined(first, { documents, next }) {
    const last = first.documents.at(-1);
    if (!last)
        return first.next === null ? first : { documents, next };
    const place = documents.findIndex(({ id }) => id === last.id);
    const rest = place < 0 ? [] : documents.slice(place + 1);
    return rest.length ? { documents: [...first.documents, ...rest], next } : first;
}

function cells(document) {
    return [el("span", { class: "time" }, moment(document.accepted)), el("strong", {}, documentTitle(document)),
        document.total === null ? null : el("span", {}, money(document.total)), badge(document),
        el("span", { class: "small" }, documentPlaceName(document)),
        el("span", { class: "small id" }, document.id)].filter(Boolean);
}
