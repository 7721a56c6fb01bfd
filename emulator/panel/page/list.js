// A list of any length that draws only what is seen. Keyboard and roles are those of a listbox.

import { el } from "./dom.js";

// How far beyond the edges is drawn, in pixels, so that a slow wheel meets no blanks.
const MARGIN = 400;
const END = 4;

export class VirtualList {
    // create(index) gives the element of a place, height(index, width) its pixels in a list so wide. onChoose(index) is
    // told of a choice by the user, onScroll(first, last, isAtEnd) after each move.
    constructor(scroller, { create, height, onChoose = () => {}, onScroll = () => {}, idPrefix }) {
        Object.assign(this, { scroller, create, height, onChoose, onScroll, idPrefix });
        this.offsets = [0];
        this.shown = new Map();
        this.chosen = -1;
        this.sheet = el("div", { class: "sheet", role: "presentation" });
        scroller.replaceChildren(this.sheet);
        this.#listen();
    }

    get count() {
        return this.offsets.length - 1;
    }

    get isAtEnd() {
        const { scrollTop, clientHeight, scrollHeight } = this.scroller;
        return scrollTop + clientHeight >= scrollHeight - END;
    }

    // What is at the upper edge stays there, whatever has grown above it.
    layout(count = this.count) {
        const { scrollTop, clientWidth } = this.scroller;
        if (clientWidth === 0 && count === this.count)
            return;
        const top = this.#indexAt(scrollTop);
        const inside = scrollTop - this.offsets[top];
        const offsets = [0];
        for (let i = 0; i < count; ++i)
            offsets.push(offsets[i] + this.height(i, clientWidth));
        this.offsets = offsets;
        this.sheet.style.height = `${offsets[count]}px`;
        if (scrollTop > 0 && top < count)
            this.scroller.scrollTop = offsets[top] + inside;
        this.draw();
    }

    // All anew: the places mean something else now.
    reset(count) {
        this.#clear();
        this.chosen = -1;
        this.layout(count);
    }

    // The first places go. The others keep their elements, which may be under a mouse that is pressed, and stay
    // where they are on the screen; layout() tells how many there are now.
    dropFirst(count) {
        const gone = this.offsets[count];
        const shown = [...this.shown];
        this.shown.clear();
        this.offsets = this.offsets.slice(count).map((offset) => offset - gone);
        this.chosen = Math.max(this.chosen - count, -1);
        for (const [index, element] of shown)
            if (index < count)
                element.remove();
            else
                this.#number(index - count, element);
        this.scroller.scrollTop -= gone;
    }

    redraw() {
        this.#clear();
        this.draw();
    }

    toEnd() {
        this.scroller.scrollTop = this.scroller.scrollHeight;
        this.draw();
    }

    choose(index, { isQuiet = false } = {}) {
        const before = this.shown.get(this.chosen);
        this.chosen = index;
        before?.setAttribute("aria-selected", "false");
        this.shown.get(index)?.setAttribute("aria-selected", "true");
        this.#point();
        if (!isQuiet)
            this.onChoose(index);
    }

    reveal(index) {
        const { scrollTop, clientHeight } = this.scroller;
        const [top, bottom] = [this.offsets[index], this.offsets[index + 1]];
        if (top < scrollTop || bottom - top > clientHeight)
            this.scroller.scrollTop = top;
        else if (bottom > scrollTop + clientHeight)
            this.scroller.scrollTop = bottom - clientHeight;
        this.draw();
    }

    draw() {
        const { scrollTop, clientHeight } = this.scroller;
        const first = this.#indexAt(scrollTop - MARGIN);
        const last = this.#indexAt(scrollTop + clientHeight + MARGIN);
        for (const [index, element] of this.shown)
            if (index < first || index > last)
                this.#drop(index, element);
        for (let i = first; i <= last && i < this.count; ++i)
            this.#place(i);
        this.#point();
        this.onScroll(first, Math.min(last, this.count - 1), this.isAtEnd);
    }

    #place(index) {
        const element = this.shown.get(index) ?? this.#make(index);
        element.style.top = `${this.offsets[index]}px`;
        element.style.height = `${this.offsets[index + 1] - this.offsets[index]}px`;
        element.setAttribute("aria-setsize", this.count);
    }

    #make(index) {
        const element = this.create(index);
        element.setAttribute("role", "option");
        element.setAttribute("aria-selected", String(index === this.chosen));
        this.#number(index, element);
        this.sheet.append(element);
        return element;
    }

    #number(index, element) {
        element.id = `${this.idPrefix}-${index}`;
        element.setAttribute("aria-posinset", index + 1);
        this.shown.set(index, element);
    }

    #drop(index, element) {
        element.remove();
        this.shown.delete(index);
    }

    #clear() {
        this.sheet.replaceChildren();
        this.shown.clear();
    }

    // The last place that begins at or above so many pixels.
    #indexAt(pixels) {
        let [low, high] = [0, Math.max(this.count - 1, 0)];
        while (low < high) {
            const middle = Math.ceil((low + high) / 2);
            if (this.offsets[middle] <= pixels)
                low = middle;
            else
                high = middle - 1;
        }
        return low;
    }

    #point() {
        if (this.shown.has(this.chosen))
            this.scroller.setAttribute("aria-activedescendant", `${this.idPrefix}-${this.chosen}`);
        else
            this.scroller.removeAttribute("aria-activedescendant");
    }

    #listen() {
        let isAsked = false;
        const soon = () => {
            if (!isAsked)
                requestAnimationFrame(() => { isAsked = false; this.draw(); });
            isAsked = true;
        };
        this.scroller.addEventListener("scroll", soon, { passive: true });
        this.scroller.addEventListener("keydown", (event) => this.#key(event));
        this.sheet.addEventListener("click", ({ target }) => {
            const option = target.closest("[role=option]");
            if (option)
                this.choose(Number(option.ariaPosInSet) - 1);
        });
        new ResizeObserver(() => this.layout()).observe(this.scroller);
    }

    #key(event) {
        const isPlain = !event.altKey && !event.ctrlKey && !event.metaKey;
        const next = isPlain ? this.#nextChoice(event.key) : null;
        if (next === null || this.count === 0)
            return;
        event.preventDefault();
        const index = Math.min(Math.max(next, 0), this.count - 1);
        this.choose(index);
        this.reveal(index);
    }

    #nextChoice(key) {
        const from = this.chosen < 0 ? this.#indexAt(this.scroller.scrollTop) : this.chosen;
        const isFirst = this.chosen < 0 ? 0 : 1;
        const moves = {
            ArrowDown: from + isFirst, ArrowUp: from - isFirst, PageDown: from + 10, PageUp: from - 10,
            Home: 0, End: this.count - 1, Enter: from, " ": from,
        };
        return moves[key] ?? null;
    }
}
