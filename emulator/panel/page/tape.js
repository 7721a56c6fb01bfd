// The tape: entry under entry as they were printed. It keeps the place while it is held, and the end while it follows.

import { el, throttled } from "./dom.js";
import { VirtualList } from "./list.js";
import { Pictures } from "./pictures.js";
import { t, time } from "./i18n.js";

const PORTION = 50;
// Entries whose text is kept, and entries that are shown at all: a browser draws no element of any height.
const KEPT = 2000;
const SHOWN = 20000;
const PAPER = 480;
const EDGE = 24;
const FRAME = 60;
const UNKNOWN = { width: 640, height: 700 };

export class Tape {
    constructor(scroller, { onChoose, onFollow }) {
        Object.assign(this, { scroller, onChoose, onFollow });
        this.isFollowing = true;
        // A register at work prints faster than anybody reads.
        this.extend = throttled(FRAME, () => {
            if (this.isFollowing && this.last - this.base > 2 * SHOWN)
                this.#restart({ first: 1, last: this.last });
            this.list.layout(this.last - this.base + 1);
            this.#settle();
        });
        this.#forget(1, 0);
        this.list = new VirtualList(scroller, {
            idPrefix: "print",
            create: (index) => this.#create(this.base + index),
            height: (index, room) => this.#height(this.base + index, room),
            onChoose: (index) => this.#choose(index),
            onScroll: (first, last) => this.#need(this.base + first, this.base + last),
        });
        scroller.addEventListener("scroll", () => this.#scrolled());
        new ResizeObserver(() => this.#settle()).observe(scroller);
    }

    // The tape of a register, from nothing.
    async open(api) {
        this.api = api;
        this.pictures?.clear();
        this.pictures = new Pictures(api);
        this.#forget(1, 0);
        this.list.reset(0);
        await this.sync();
    }

    // After a line was lost: the same tape goes on, or there is another one now.
    async sync() {
        const { api } = this;
        const head = await api.get("/tape", { after: Math.max(this.last - 1, 0), limit: 1 });
        if (api !== this.api)
            return;
        if (this.last === 0 || !this.#isSame(head))
            return this.#restart(head);
        this.grown(head.last);
        // Pictures may have failed meanwhile.
        this.redraw();
    }

    grown(number) {
        if (number <= this.last)
            return;
        this.last = number;
        this.extend();
    }

    follow(isFollowing) {
        if (isFollowing !== this.isFollowing) {
            this.isFollowing = isFollowing;
            this.onFollow(isFollowing);
        }
        this.#settle();
    }

    redraw() {
        this.list.redraw();
    }

    // Marks the print of a document that was chosen elsewhere, if it is on the tape.
    async mark(document) {
        const { api } = this;
        const known = [...this.entries.values()].find((entry) => entry?.document === document);
        const entry = known ?? await this.#find(document);
        if (!entry || api !== this.api)
            return;
        this.list.choose(entry.number - this.base, { isQuiet: true });
        this.#showChosen();
    }

    // The search has given the place back.
    uncovered() {
        this.list.layout();
        this.#showChosen();
        this.#settle();
    }

    get isEmpty() {
        return this.list.count === 0;
    }

    #showChosen() {
        if (this.isFollowing || this.list.chosen < 0)
            return;
        this.list.reveal(this.list.chosen);
        // Nobody has scrolled to the end, should this be there.
        this.revealed = this.scroller.scrollTop;
    }

    // Documents stand on the tape in their order, with other prints between them.
    async #find(document) {
        let [low, high] = [this.base, this.last];
        while (low <= high) {
            const middle = Math.floor((low + high) / 2);
            const { entries } = await this.api.get("/tape", { after: middle - 1, limit: PORTION });
            const entry = entries.find((other) => other.document === document);
            if (entry)
                return entry;
            const next = entries.find((other) => other.document !== null);
            if (next && next.document < document)
                low = next.number + 1;
            else
                high = middle - 1;
        }
        return null;
    }

    #forget(base, last) {
        Object.assign(this, { base, last, entries: new Map(), sizes: new Map(), isLoading: false });
        Object.assign(this, { mean: UNKNOWN, wanted: [0, 0] });
    }

    #isSame(head) {
        const [now] = head.entries;
        const known = this.entries.get(this.last);
        return head.last >= this.last && (!known || JSON.stringify(known) === JSON.stringify(now));
    }

    #restart(head) {
        this.pictures.clear();
        this.#forget(Math.max(head.first, head.last - SHOWN + 1, 1), head.last);
        this.list.reset(head.last - this.base + 1);
        this.follow(true);
    }

    #settle() {
        if (this.isFollowing)
            this.list?.toEnd();
    }

    // Only the user moves upwards: what grows or shrinks leaves a following tape at its end.
    #scrolled() {
        const { scrollTop } = this.scroller;
        const isUp = scrollTop < this.before;
        this.before = scrollTop;
        if (scrollTop === this.revealed)
            return;
        this.revealed = null;
        if (this.isFollowing && isUp && !this.list.isAtEnd)
            this.follow(false);
        else if (!this.isFollowing && !isUp && this.list.isAtEnd && this.isMoved)
            this.follow(true);
        this.isMoved = true;
    }

    #choose(index) {
        if (index < this.list.count - 1)
            this.follow(false);
        const entry = this.entries.get(this.base + index);
        if (entry)
            this.onChoose(entry);
    }

    #height(number, room) {
        const { width, height } = this.sizes.get(number) ?? this.mean;
        return Math.max(Math.round(height * Math.min(PAPER, room - EDGE) / width), 1);
    }

    #create(number) {
        const entry = this.entries.get(number);
        if (!entry)
            return el("div", { class: "print", "aria-label": t("printed", { number }) },
                entry === null ? t("notKept") : t("loading"));
        const picture = el("img", { alt: "" });
        const element = el("div", { class: "print", "aria-label": this.#label(entry) }, picture);
        this.pictures.show(picture, `/tape/${number}.svg`).catch(() => element.append(t("notKept")));
        return element;
    }

    #label({ number, document, dateTime, lines }) {
        const key = document ? "printedDocument" : "printed";
        const head = t(key, { number, document, time: time(dateTime) });
        return `${head}: ${lines.map((line) => line.trim()).filter(Boolean).slice(0, 6).join(", ")}`;
    }

    // One portion at a time; what is looked at when it is there says what comes next.
    #need(first, last) {
        this.wanted = [first, last];
        for (let number = first; !this.isLoading && number <= last; ++number)
            if (!this.entries.has(number))
                this.#load(number);
    }

    async #load(number) {
        const { entries, api } = this;
        this.isLoading = true;
        try {
            const after = Math.max(number - PORTION / 2, this.base) - 1;
            const answer = await api.get("/tape", { after, limit: PORTION });
            if (entries === this.entries)
                this.#take(number, answer);
        } catch {
            // The line is lost; what is missing is asked for with the next move.
            if (entries === this.entries)
                this.isLoading = false;
        }
    }

    #take(number, answer) {
        answer.entries.forEach((entry) => this.#keep(entry));
        if (!this.entries.has(number))
            this.entries.set(number, null);
        this.#shed();
        this.isLoading = false;
        this.list.redraw();
        this.list.layout();
        this.#settle();
    }

    #keep(entry) {
        this.entries.set(entry.number, entry);
        this.sizes.set(entry.number, { width: entry.width, height: entry.height });
        const weight = Math.min(this.sizes.size, 50);
        const height = this.mean.height + (entry.height - this.mean.height) / weight;
        this.mean = { width: entry.width, height };
    }

    // Those read first go, unless they are on the screen.
    #shed() {
        const [first, last] = this.wanted;
        for (const number of this.entries.keys()) {
            if (this.entries.size <= KEPT)
                return;
            if (number < first || number > last)
                this.entries.delete(number);
        }
    }
}
