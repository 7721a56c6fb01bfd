// What states, kinds and times are called.

import { el } from "./dom.js";
import { has, language, t } from "./i18n.js";

const TONES = {
    issued: "good", notIssued: "warn", unknown: "bad", ready: "good", making: "good", waiting: "bad", stopped: "bad",
    unreachable: "bad",
    paused: "warn", pausing: "warn", starting: "warn", stopping: "warn",
};

export const tone = (state) => TONES[state] ?? "";

const named = (group, name) => (has(`${group}_${name}`) ? t(`${group}_${name}`) : name);

export const isReceipt = (kind) => ["sell", "sellReturn"].includes(kind);
export const kindName = (kind) => named("kind", kind);
// "Sale no. 3", as far as there is a number.
export const documentTitle = ({ kind, documentNumber }) =>
    kindName(kind) + (documentNumber ? ` ${t("number", { number: documentNumber })}` : "");
export const reasonName = (reason) => named("reason", reason);
export const absenceName = (absent) => named("absent", absent);
export const poolName = (name) => t("poolNamed", { name });
export const waitingName = (waiting) => named("waiting", waiting);

// "queued, waiting: paper"; "not issued: expired".
export function documentState({ state, reason, waiting }) {
    if (waiting)
        return t("waitingFor", { what: waitingName(waiting) });
    return reason ? `${named("state", state)}: ${reasonName(reason)}` : named("state", state);
}

export function registerState({ state, waiting, pausedBy, pausedSince, owner }) {
    if (state === "waiting")
        return t("waitingFor", { what: waitingName(waiting) });
    if (state === "standby" && owner)
        return `${named("works", state)} (${owner.host})`;
    return pausedBy ? `${named("works", state)} (${pausedBy}, ${moment(pausedSince)})` : named("works", state);
}

export const badge = (document) =>
    el("span", { class: `badge ${document.waiting ? "bad" : tone(document.state)}` }, documentState(document));

// The service's times are universal; the page shows them as the reader's clock does.
export function moment(text) {
    if (!text)
        return "";
    const form = { dateStyle: "short", timeStyle: "medium" };
    return new Date(text).toLocaleString(language() === "ru" ? "ru" : "en-GB", form);
}

// [[name, text or element, tone]] as a list of definitions; those without a text are left out.
export function facts(pairs) {
    const isTold = ([, text]) => text !== null && text !== undefined && text !== "";
    return pairs.filter(isTold).map(([name, text, tint]) =>
        [el("dt", {}, t(name)), el("dd", { class: tint }, typeof text === "object" ? text : String(text))]).flat();
}
