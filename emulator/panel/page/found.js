// Documents that were searched for; they may have left the tape, or never been on it.

import { byId, el, russian } from "./dom.js";
import { count, money, t, time } from "./i18n.js";
import { VirtualList } from "./list.js";

const ROW = 56;
const PORTION = 100;
export const KINDS = ["any", "number", "sum", "id", "text"];

// The queries of what a person typed, the likeliest first. A fiscal sign has ten digits, a sum two decimals.
export function queriesOf(by, what) {
    const text = what.trim();
    if (text === "")
        return [{}];
    if (by !== "any")
        return [queryOf(by, text)];
    const kind = guess(text);
    // Digits may be those of a barcode or of a price, too.
    return [queryOf(kind, text), ...(kind === "text" ? [] : [{ text }])];
}

const queryOf = (kind, text) => ({ [kind]: kind === "sum" ? plainSum(text) : text });

function guess(text) {
    if (/^\d{1,9}$/.test(text))
        return "number";
    if (/^\d{1,3}([\s,]?\d{3})*[.,]\d{2}(\s?₽)?$/.test(text))
        return "sum";
    return /^\d{10}$/.test(text) ? "id" : "text";
}

// As receipts and this page write sums: "1234.5", "1 234,50 ₽", "1,234.50".
function plainSum(text) {
    const [, roubles, kopecks = ""] = /^(.*?)(?:[.,](\d{0,2}))?$/.exec(text.replace(/[\s₽]/g, ""));
    return `${roubles.replace(/,/g, "")}.${kopecks.padEnd(2, "0")}`;
}

export class Found {
    constructor({ onChoose, onSearch, onError, onClose }) {
        Object.assign(this, { onChoose, onSearch, onError, onClose, queries: [{}], query: {}, items: [], next: null });
        this.form = byId("search");
        this.list = new VirtualList(byId("found-list"), {
            idPrefix: "found",
            create: (index) => this.#row(this.items[index]),
            height: () => ROW,
            onChoose: (index) => this.onChoose(this.items[index].number),
            onScroll: (first, last) => this.#more(last),
        });
        this.form.addEventListener("submit", (event) => this.#submit(event));
        byId("found-close").addEventListener("click", () => this.close());
        byId("found").addEventListener("keydown", (event) => event.key === "Escape" && this.close());
    }

    open(api) {
        this.api = api;
        this.close();
    }

    close() {
        const hadFocus = byId("found").contains(document.activeElement);
        this.#toggle(false);
        this.onClose();
        if (hadFocus)
            byId("tape").focus();
    }

    redraw() {
        const by = this.form.by.value || "any";
        this.form.by.replaceChildren(...KINDS.map((kind) => el("option", { value: kind }, t(`by_${kind}`))));
        this.form.by.value = by;
        this.#title();
        this.list.redraw();
    }

    get #isOpen() {
        return !byId("found").hidden;
    }

    #toggle(isOpen) {
        byId("found").hidden = !isOpen;
        byId("tape").hidden = isOpen;
    }

    async #submit(event) {
        event.preventDefault();
        this.onSearch();
        this.queries = queriesOf(this.form.by.value, this.form.what.value);
        this.#toggle(true);
        await this.again();
    }

    // The same search; documents may have come or gone.
    async again() {
        if (!this.#isOpen)
            return;
        const search = {};
        this.search = search;
        for (const query of this.queries) {
            Object.assign(this, { query, items: [], next: null });
            this.list.reset(0);
            this.#title();
            await this.#load();
            if (search !== this.search || this.items.length > 0)
                return;
        }
    }

    async #load() {
        const { items } = this;
        this.isLoading = true;
        try {
            const before = this.next === null ? {} : { before: this.next };
            const answer = await this.api.get("/documents", { ...this.query, ...before, limit: PORTION });
            if (items === this.items)
                this.#take(answer);
        } catch (problem) {
            this.onError(problem);
        } finally {
            this.isLoading = false;
        }
    }

    #take({ documents, next }) {
        this.items.push(...documents);
        this.next = next;
        this.list.layout(this.items.length);
        this.#title();
    }

    #more(last) {
        if (this.#isOpen && this.next !== null && !this.isLoading && last >= this.items.length - 1)
            this.#load();
    }

    #title() {
        const isAll = Object.keys(this.query).length === 0;
        const key = this.next !== null ? "foundMore" : isAll ? "foundAll" : "found";
        byId("found-heading").textContent = this.#isOpen ? t(key, { count: count(this.items.length) }) : "";
    }

    #row({ number, kind, dateTime, total, fiscalSign }) {
        const sum = total ? money(total) : "";
        return el("div", { class: "row two", "aria-label": `${number}, ${kind}, ${sum}, ${time(dateTime)}` },
            el("span", {}, el("b", {}, String(number)), " ", russian(kind), " ", el("b", { class: "sum" }, sum)),
            el("span", { class: "small" }, `${time(dateTime)} · ${t("fiscalSign")} ${fiscalSign}`));
    }
}
