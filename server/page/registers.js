// The registers, with what a manager asks of them.

import { button, el, russian, setText } from "./dom.js";
import { money, t } from "./i18n.js";
import { absenceName, facts, kindName, moment, registerState, tone } from "./labels.js";
import { waitingNote } from "./waiting.js";

const HOUR = 3600000;
const DAY = 24 * HOUR;
// A shift may last for 24 hours, and its end takes its time.
const LONG_SHIFT = 23 * HOUR;
const LAST_DAYS = 30;

class RegisterCard {
    constructor(name, doings) {
        this.state = el("span", { class: "state" });
        this.note = el("p", { class: "note" });
        this.facts = el("dl", { class: "facts" });
        this.x = button(t("xReport"), () => doings.report(name, "xReport"), { "data-do": "x", "data-needs": "sell" });
        this.z = button(t("zReport"), () => doings.report(name, "zReport"), { "data-do": "z", "data-needs": "sell" });
        this.hold = button("", () => doings.hold(name, this.isHeld), { "data-do": "hold", "data-needs": "admin" });
        const heading = el("h3", { id: `register-${name}` }, name, " ", this.state);
        this.root = el("article", { class: "card", "data-register": name, "aria-labelledby": heading.id }, heading,
            this.note, this.facts, el("div", { class: "choice" }, this.x, this.z, this.hold));
    }

    update(register, isBusy) {
        this.isHeld = register.state === "paused" || register.state === "pausing";
        this.state.className = `state ${tone(register.state)}`;
        setText(this.state, registerState(register));
        const { text, lang } = waitingNote(register);
        this.note.lang = lang;
        setText(this.note, text);
        setText(this.hold, t(this.isHeld ? "resume" : "pause"));
        this.x.disabled = isBusy(`xReport:${register.name}`);
        this.z.disabled = isBusy(`zReport:${register.name}`);
        this.facts.replaceChildren(...facts([paper(register), shift(register), lastReceipt(register), queue(register),
            unsent(register), drive(register), pools(register), ...alarms(register), ["model", modelText(register)],
            ["service", register.service], told(register)]));
    }
}

// As far as its documents tell.
function paper({ condition, waiting }) {
    if (waiting === "paper")
        return ["paper", t("paperOut"), "bad"];
    return ["paper", t(condition?.paper ? "paperIn" : "notKnown")];
}

function shift({ shift, state }) {
    if (typeof shift?.open !== "boolean" || state === "starting")
        return ["shift", t("notKnown")];
    if (!shift.open)
        return ["shift", t("shiftClosed")];
    const isLong = shift.since && Date.now() - Date.parse(shift.since) > LONG_SHIFT;
    return ["shift", shift.since ? t("shiftSince", { time: moment(shift.since) }) : t("shiftOpen"), isLong ? "bad" : ""];
}

// Over HEX a register does not tell the number of the document.
function lastReceipt({ lastReceipt: last }) {
    if (!last)
        return ["lastReceipt", t("none")];
    const { kind, total, shift, receiptNumber, documentNumber, settled } = last;
    const number = receiptNumber && shift ? t("receiptOfShift", { number: receiptNumber, shift }) : null;
    return ["lastReceipt", [kindName(kind), total === null ? null : money(total), number,
        documentNumber && t("documentOf", { number: documentNumber }), moment(settled)].filter(Boolean).join(", ")];
}

function queue({ queue: { queued, running, oldest } }) {
    const count = queued + running;
    return ["queue", oldest ? t("queueSince", { count, time: moment(oldest) }) : count, queued > 0 ? "warn" : ""];
}

function unsent({ condition, unsentSince }) {
    const count = condition?.unsent ?? null;
    if (count === null)
        return ["unsent", t("notKnown")];
    const text = count && unsentSince ? t("unsentSince", { count, time: moment(unsentSince) }) : count;
    return ["unsent", text, count > 0 ? "warn" : ""];
}

function drive({ condition, identity }) {
    const test = identity?.testDrive ? `, ${t("testDrive")}` : "";
    if (!condition?.driveUntil)
        return ["drive", t("notKnown") + test];
    // By the calendar, as the service counts them: its last day has 0 left.
    const days = Math.ceil((Date.parse(`${condition.driveUntil}T00:00`) - Date.now()) / DAY);
    const tint = days < LAST_DAYS ? "bad" : "";
    return ["drive", t("driveDays", { days, date: condition.driveUntil }) + test, tint];
}

function pools({ pools: served }) {
    const texts = (served ?? []).map(({ name, absent }) => (absent ? `${name} (${absenceName(absent)})` : name));
    return ["pools", texts.join(", "), served?.some(({ absent }) => absent) ? "warn" : ""];
}

const alarms = ({ alarms: told }) => (told ?? []).map(({ text }) => ["alarm", russian(text), "bad"]);

function told({ state, toldAge }) {
    return ["told", state === "unreachable" ? t("toldBefore", { minutes: Math.floor(toldAge / 60) }) : null, "bad"];
}

const modelText = ({ identity }) => [identity?.model, identity?.serial].filter(Boolean).join(", ");

export class Registers {
    constructor(root, doings) {
        Object.assign(this, { root, doings, known: new Map(), cards: new Map(), events: new Map(), moment: 0 });
    }

    get names() {
        return [...this.known.keys()];
    }

    get all() {
        return [...this.known.values()];
    }

    set(registers) {
        this.known = new Map(registers.map((register) => [register.name, register]));
        this.redraw();
    }

    // An event, which has what the register tells of itself.
    note(register) {
        this.events.set(register.name, { register, moment: ++this.moment });
        this.update(register);
    }

    // What events have told that came later: an answer that was asked for at that moment may be older than they are.
    notedSince(moment) {
        return [...this.events.values()].filter((event) => event.moment > moment).map(({ register }) => register);
    }

    // Queue and last receipt stay where they are not told.
    update(register) {
        if (!this.known.has(register.name))
            return;
        this.known.set(register.name, { ...this.known.get(register.name), ...register });
        this.#show(register.name);
    }

    show() {
        this.names.forEach((name) => this.#show(name));
    }

    redraw() {
        this.cards = new Map(this.names.map((name) => [name, new RegisterCard(name, this.doings)]));
        this.root.replaceChildren(...[...this.cards.values()].map((card) => card.root));
        this.show();
    }

    #show(name) {
        this.cards.get(name)?.update(this.known.get(name), this.doings.isBusy);
    }
}
