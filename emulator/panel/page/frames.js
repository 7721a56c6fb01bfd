// Exchanges in words: what was asked and answered, each frame with its time, fields and bytes.

import { el, russian } from "./dom.js";
import { count, lineTime, t, time } from "./i18n.js";

export function exchangeTitle({ protocol, command, name }) {
    return name || command ? `${protocol} ${command} ${name}`.trim() : `${protocol} ${t("unknownCommand")}`;
}

// Short marks of what was unusual: text, and how bad it is.
export function exchangeMarks({ error, fault, document, warnings }) {
    return [
        error !== null && badge("bad", t(document === null ? "refused" : "answeredError", { error })),
        fault !== null && badge("warn", t("faultHit", { fault })),
        document !== null && badge("good", t("storedDocument", { number: document })),
        ...warnings.map(({ text }) => badge("warn", t("warning", { text }))),
    ].filter(Boolean);
}

const badge = (level, text) => el("span", { class: `badge ${level}` }, text);

// A line that opens; the frames are made when it does.
export function exchangeLine(exchange) {
    const line = el("details", { class: "exchange" },
        el("summary", {}, el("span", { class: "time" }, time(exchange.dateTime).slice(11)), " ",
            el("span", { class: "command" }, exchangeTitle(exchange)), " ", exchangeMarks(exchange)));
    line.addEventListener("toggle", () => line.append(exchangeBody(exchange)), { once: true });
    return line;
}

export function exchangeBody({ reason, frames }) {
    const why = reason && el("p", { class: "reason" }, reason);
    return el("div", { class: "frames" }, why || null, frames.map(frameBlock));
}

function frameBlock(frame) {
    const way = t(frame.direction);
    return el("section", { class: `frame ${frame.direction}`, "aria-label": `${way} ${lineTime(frame.dateTime)}` },
        el("h4", {}, el("span", { "aria-hidden": "true" }, frame.direction === "toHost" ? "← " : "→ "),
            `${lineTime(frame.dateTime)} ${way}`),
        el("p", { class: "meaning" }, frame.text, after(frame.meaning)),
        fieldTable(frame.meaning.fields),
        el("details", {}, el("summary", {}, sizeText(frame)), el("pre", { class: "bytes" }, pairs(frame.bytes))));
}

function after({ microseconds }) {
    return microseconds === null ? null : ` (${t("microseconds", { count: count(microseconds) })})`;
}

function sizeText({ bytes, size }) {
    const shown = bytes.length / 2;
    return t(shown < size ? "bytesCut" : "bytes", { count: count(size), shown: count(shown) });
}

const pairs = (bytes) => bytes.replace(/(..)(?=.)/g, "$1 ");

function fieldTable(fields) {
    if (fields.length === 0)
        return null;
    return el("table", { class: "fields" },
        el("thead", {}, el("tr", {}, head("name"), head("value"))),
        el("tbody", {}, fields.map(({ name, value }) =>
            el("tr", {}, el("th", { scope: "row" }, name), el("td", {}, russian(value))))));
}

export const head = (key) => el("th", { scope: "col" }, t(key));
