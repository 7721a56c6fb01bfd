// One document: what is known of it, its positions and its attempts.

import { Newest } from "./api.js";
import { button, el, russian } from "./dom.js";
import { money, t } from "./i18n.js";
import { badge, documentTitle, facts, isReceipt, moment, reasonName } from "./labels.js";
import { DocumentPicture } from "./picture.js";
import { placeName, placeOfPool } from "./places.js";
import { resolution } from "./resolve.js";

const MOST_BUTTONS = 6;

export class DocumentView {
    constructor(root, api, { resolve, withdraw, move }) {
        Object.assign(this, { root, api, resolve, withdraw, move, id: null, registers: [], pools: [], told: null });
        this.picture = new DocumentPicture(api);
        this.newest = new Newest();
    }

    async show(id) {
        if (id !== this.id)
            this.told = null;
        this.id = id;
        await this.again();
    }

    // What is typed into its forms stays when nothing has changed.
    async again() {
        const { id } = this;
        if (id === null)
            return this.redraw();
        const document = await this.newest.of(this.api.get(`/documents/${encodeURIComponent(id)}`));
        const told = JSON.stringify(document);
        if (!document || id !== this.id || told === this.told)
            return undefined;
        Object.assign(this, { document, told });
        return this.redraw();
    }

    redraw() {
        this.root.replaceChildren(...(this.document ? this.#all(this.document) : [el("p", { class: "hint" }, t("nothingChosen"))]));
    }

    #all(document) {
        return [el("h3", {}, documentTitle(document), " ", badge(document)), problem(document),
            ...this.#doings(document), el("dl", { class: "facts" }, factsOf(document)), items(document),
            this.picture.of(document), ...attempts(document), body(document)].filter(Boolean);
    }

    #doings({ id, state, register, pool, kind }) {
        if (state === "unknown")
            return [el("p", {}, t("howToResolve")), resolution(id, this.resolve)];
        if (state !== "queued")
            return [];
        const pools = isReceipt(kind) ? this.pools.filter((name) => register !== null || name !== pool) : [];
        const others = [...this.registers.filter((name) => name !== register), ...pools.map(placeOfPool)];
        return [el("div", { class: "buttons", "data-needs": "sell" }, button(t("withdraw"), () => this.withdraw(id), { "data-do": "withdraw" }),
            ...this.#moves(id, others))];
    }

    // A rack has hundreds of them.
    #moves(id, places) {
        const name = (place) => t("moveTo", { name: placeName(place) });
        if (places.length <= MOST_BUTTONS)
            return places.map((place) => button(name(place), () => this.move(id, place), { "data-do": "move" }));
        const choice = el("select", { "aria-label": t("move") },
            places.map((place) => el("option", { value: place }, name(place))));
        return [choice, button(t("move"), () => this.move(id, choice.value), { "data-do": "move" })];
    }
}

function problem({ error }) {
    if (!error)
        return null;
    return el("p", { class: "refusal" }, el("strong", {}, russian(error.text)), " ", error.action && russian(error.action));
}

function factsOf(document) {
    const { id, register, pool, accepted, begun, settled, drive, shift, receiptNumber, total, change, startBefore, returnOf,
        resolvedBy, note, reason } = document;
    return facts([["id", id], ["register", register], ["pool", pool], ["reason", reason && reasonName(reason)],
        ["total", total === null ? null : money(total)], ["change", change ? money(change) : null],
        ["shift", shift], ["receiptNumber", receiptNumber], ["fiscalDrive", drive], ["accepted", moment(accepted)],
        ["startBefore", settled ? null : moment(startBefore)], ["begun", moment(begun)], ["settled", moment(settled)],
        ["returnOf", returnOf], ["resolvedBy", resolvedBy], ["note", note]]);
}

function items({ items: sold }) {
    if (!sold?.length)
        return null;
    const row = ({ name, price, quantity, amount }) =>
        el("tr", {}, el("th", { scope: "row", lang: "ru" }, name), el("td", {}, String(quantity)),
            el("td", {}, money(price)), el("td", {}, money(amount)));
    const heads = ["position", "quantity", "price", "amount"].map((key) => el("th", { scope: "col" }, t(key)));
    return el("table", {}, el("caption", { class: "hidden" }, t("positions")), el("thead", {}, el("tr", {}, heads)),
        el("tbody", {}, sold.map(row)));
}

function attempts({ attempts: made }) {
    return made?.length ? [el("h4", {}, t("attempts")), ...made.map(attempt)] : [];
}

function attempt({ number, begun, ended, state, error, warnings, markBefore, markAfter, documentNumber }) {
    const last = (mark) => mark?.lastDocument ?? null;
    return el("section", { class: "attempt" },
        el("h4", {}, t("attempt", { number }), " ", state && badge({ state })),
        error && el("p", { class: "reason" }, russian(error.text)),
        (warnings ?? []).map((text) => el("p", { lang: "ru" }, text)),
        el("dl", { class: "facts" }, facts([["begun", moment(begun)], ["ended", moment(ended)],
            ["documentNumber", documentNumber], ["lastBefore", last(markBefore)], ["lastAfter", last(markAfter)]])));
}

function body({ body: posted }) {
    if (!posted)
        return null;
    return el("details", {}, el("summary", {}, t("asPosted")),
        el("pre", { class: "body", lang: "ru" }, typeof posted === "string" ? posted : JSON.stringify(posted, null, 2)));
}
