// The answers that a person can give.

import { el } from "./dom.js";
import { t } from "./i18n.js";

function answer(label, input, verb, onAnswer) {
    const send = (event) => {
        event.preventDefault();
        onAnswer(input.value.trim());
    };
    return el("form", { on: { submit: send } },
        el("label", { class: "field" }, el("span", {}, t(label)), input), el("button", {}, t(verb)));
}

// The register's tape tells what has become of the document.
export function resolution(id, resolve) {
    const number = el("input", { type: "number", min: "1", step: "1", name: "documentNumber", required: true });
    const note = el("input", { name: "note", required: true, autocomplete: "off" });
    return el("div", { class: "answers", "data-needs": "admin" },
        answer("onTape", number, "itIsIssued", (text) => resolve(id, { state: "issued", documentNumber: Number(text) })),
        answer("notOnTape", note, "itIsNotIssued", (text) => resolve(id, { state: "notIssued", note: text })));
}

export function acceptance(name, accept) {
    const note = el("input", { name: "note", required: true, autocomplete: "off" });
    return el("div", { class: "answers", "data-needs": "admin" }, answer("lookedAt", note, "acceptIt", (text) => accept(name, text)));
}
