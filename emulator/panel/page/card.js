// One thing of the register: what it is now, and the switches for it. It stays the same element while its state
// changes, so that the focus stays where it is.

import { button, el, setText } from "./dom.js";
import { t } from "./i18n.js";

export class Card {
    // level of set(): "", "good", "warn" or "bad", which the words say, too; note is the small print.
    constructor(key, ...content) {
        this.state = el("span", { class: "state" });
        this.note = el("p", { class: "note small" });
        this.root = el("section", { class: `card ${key}`, "aria-label": t(key), "data-card": key },
            el("h2", {}, t(key)), this.state, this.note, ...content);
    }

    set(text, level = "", note = "") {
        setText(this.state, text);
        setText(this.note, note);
        this.state.className = `state ${level}`;
    }
}

// Buttons of which one is pressed.
export class Choice {
    constructor(key, values, onPick) {
        this.buttons = new Map(values.map((value) => [value, this.#button(key, value, onPick)]));
        this.root = el("div", { class: "choice", role: "group", "aria-label": t(key) }, ...this.buttons.values());
    }

    #button(key, value, onPick) {
        const attributes = { "aria-pressed": "false", "data-value": String(value) };
        return button(t(`${key}_${value}`), () => onPick(value), attributes);
    }

    set(current) {
        for (const [value, element] of this.buttons)
            element.setAttribute("aria-pressed", String(value === current));
    }
}

// A part that opens below the cards; its button says whether it is open.
export function unfolding(key, labelKey, panel) {
    panel.hidden = true;
    panel.setAttribute("aria-label", t(labelKey));
    const opener = button(t(key), () => {
        panel.hidden = !panel.hidden;
        opener.setAttribute("aria-expanded", String(!panel.hidden));
        if (!panel.hidden)
            panel.querySelector("input, select, button")?.focus();
    }, { "aria-expanded": "false", "aria-label": t(labelKey) });
    return opener;
}

export const field = (key, input) => el("label", { class: "field" }, el("span", {}, t(key)), input);
