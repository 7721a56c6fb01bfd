// All that went over the line, the newest at the end, and one of them in full.

import { el } from "./dom.js";
import { exchangeBody, exchangeMarks, exchangeTitle } from "./frames.js";
import { t, time } from "./i18n.js";
import { VirtualList } from "./list.js";

const PORTION = 500;
// As many as the interface keeps.
const KEPT = 2000;
const ROW = 44;

export class Exchanges {
    constructor(scroller, root, refusedOnly) {
        Object.assign(this, { scroller, root, refusedOnly, items: [], last: 0, isVisible: false });
        this.list = new VirtualList(scroller, {
            idPrefix: "exchange",
            create: (index) => this.#row(this.items[index]),
            height: () => ROW,
            onChoose: (index) => this.#choose(this.items[index]),
        });
        // Where the line is lost all is read anew with the next one.
        refusedOnly.addEventListener("change", () => this.sync().catch(() => {}));
    }

    open(api) {
        this.api = api;
        this.#show(null);
        return this.sync();
    }

    // All that are kept, from nothing.
    async sync() {
        Object.assign(this, { items: [], last: 0 });
        this.list.reset(0);
        if (this.isVisible)
            await this.grown();
    }

    async setVisible(isVisible) {
        this.isVisible = isVisible;
        if (isVisible)
            await this.grown();
    }

    async grown() {
        if (!this.isVisible || this.isLoading)
            return;
        this.isLoading = true;
        try {
            await this.#load(this.items);
        } finally {
            this.isLoading = false;
        }
    }

    redraw() {
        this.list.redraw();
        this.draw?.();
    }

    async #load(items) {
        const answer = await this.api.get("/exchanges", this.#query());
        if (items !== this.items)
            return this.#load(this.items);
        const wasAtEnd = this.list.isAtEnd;
        if (this.shown?.number === this.last)
            this.#renew(this.shown);
        this.#take(answer);
        if (wasAtEnd)
            this.list.toEnd();
        return answer.next === null ? undefined : this.#load(this.items);
    }

    #query() {
        return { limit: PORTION, after: this.last, ...(this.refusedOnly.checked ? { refused: true } : {}) };
    }

    #take({ exchanges }) {
        this.items.push(...exchanges);
        this.last = this.items.at(-1)?.number ?? 0;
        const surplus = Math.max(this.items.length - KEPT, 0);
        if (surplus > 0)
            this.list.dropFirst(surplus);
        this.items.splice(0, surplus);
        this.list.layout(this.items.length);
    }

    #row(exchange) {
        return el("div", { class: "row", "aria-label": this.#label(exchange) },
            el("span", { class: "time" }, time(exchange.dateTime).slice(11)), " ",
            el("span", { class: "command" }, exchangeTitle(exchange)), " ", exchangeMarks(exchange),
            el("span", { class: "why small" }, exchange.reason ?? ""));
    }

    #label(exchange) {
        const marks = exchangeMarks(exchange).map((mark) => mark.textContent);
        const parts = [time(exchange.dateTime).slice(11), exchangeTitle(exchange), ...marks, exchange.reason];
        return parts.filter(Boolean).join(", ");
    }

    #choose(exchange) {
        this.#show(exchange);
        this.#renew(exchange);
    }

    // What goes over the line after an answer belongs to its exchange, until the next request.
    async #renew(exchange) {
        try {
            const now = await this.api.get(`/exchanges/${exchange.number}`);
            if (this.shown === exchange && JSON.stringify(now) !== JSON.stringify(exchange))
                this.#show(now);
        } catch {
            // It is not kept any more, or the line is lost: what is known of it stays.
        }
    }

    #show(exchange) {
        this.shown = exchange;
        this.draw = () => this.root.replaceChildren(...(exchange ? exchangeWhole(exchange) : []));
        this.draw();
    }
}

function exchangeWhole(exchange) {
    return [el("h3", {}, `${t("exchange")} ${exchange.number}: ${exchangeTitle(exchange)}`),
        el("p", {}, exchangeMarks(exchange)), exchangeBody(exchange)];
}
