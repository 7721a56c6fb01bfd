// The register at a glance and its switches.

import { Card, Choice } from "./card.js";
import { ClockCard } from "./clock.js";
import { FaultCard } from "./faults.js";
import { count, money, t, time } from "./i18n.js";

export class Cards {
    // act(request) sends what a switch wants and shows what went wrong.
    constructor(root, glance, act) {
        Object.assign(this, { root, glance, act });
    }

    open(api) {
        this.api = api;
        this.last = null;
        this.render();
    }

    render() {
        const put = (path, body) => this.act(() => this.api.put(path, body));
        this.clock = new ClockCard(this.api, this.act);
        this.faults = new FaultCard(this.api, this.act);
        this.parts = [shiftCard(), paperCard(put), drawerCard(put), coverCard(put), powerCard(put), this.clock,
            ofdCard(put), this.faults, documentCard(), driveCard()];
        const panels = [this.clock.panel, this.faults.panel];
        this.root.replaceChildren(...this.parts.map(({ card }) => card.root), ...panels);
        if (this.last)
            this.update(this.last);
    }

    update(state) {
        this.last = state;
        this.parts.forEach((part) => part.update(state));
        const [shift, paper, , , power] = this.parts.map(({ card }) => card.state.textContent);
        const words = [[t("shift"), shift], [t("paper"), paper], [t("power"), power]];
        this.glance.textContent = words.map(([name, text]) => `${name}: ${text}`).join(" · ");
    }

    updateFaults() {
        return this.faults.read();
    }
}

function shiftCard() {
    const card = new Card("shift");
    return { card, update: ({ shift }) => card.set(...shiftText(shift)) };
}

function shiftText({ open, number, opened, tooLong, receipts, sales, returns }) {
    if (!open)
        return [t("shiftClosed", { number })];
    const words = { time: time(opened), receipts, sales: money(sales.sum), returns: money(returns.sum) };
    const text = t(tooLong ? "shiftTooLong" : "shiftOpen", { number });
    return [text, tooLong ? "bad" : "good", t("shiftSums", words)];
}

function paperCard(put) {
    const choice = new Choice("paper", ["in", "nearEnd", "out"], (state) => put("/paper", { state }));
    const card = new Card("paper", choice.root);
    return {
        card,
        update: ({ paper }) => {
            choice.set(paper.state);
            card.set(paperText(paper), { in: "good", nearEnd: "warn", out: "bad" }[paper.state]);
        },
    };
}

function paperText({ state, linesLeft, waiting }) {
    const left = linesLeft === null ? t("paperPlenty") : t("paperLines", { count: count(linesLeft) });
    const text = state === "out" ? t("paperOut") : left;
    return waiting ? `${text}, ${t("paperWaiting", { count: waiting })}` : text;
}

function openCard(key, path, put, textOf) {
    const choice = new Choice(key, [true, false], (open) => put(path, { open }));
    const card = new Card(key, choice.root);
    return {
        card,
        update: (state) => {
            choice.set(state[key].open);
            card.set(textOf(state[key]), state[key].open ? "warn" : "");
        },
    };
}

const drawerCard = (put) =>
    openCard("drawer", "/drawer", put, ({ open, cash }) => `${t(`drawerIs_${open}`)}, ${money(cash)}`);
const coverCard = (put) => openCard("cover", "/cover", put, ({ open }) => t(`coverIs_${open}`));

function powerCard(put) {
    const values = ["on", "off", "beforeStoring", "afterStoring"];
    const body = (value) => (value === "on" || value === "off" ? { state: value } : { offAt: value });
    const choice = new Choice("power", values, (value) => put("/power", body(value)));
    const card = new Card("power", choice.root);
    return {
        card,
        update: ({ power }) => {
            const value = power.offAt ?? power.state;
            choice.set(value);
            card.set(t(`powerIs_${value}`), { on: "good", off: "bad" }[value] ?? "warn");
        },
    };
}

function ofdCard(put) {
    const choice = new Choice("ofd", [true, false], (reachable) => put("/ofd", { reachable }));
    const card = new Card("ofd", choice.root);
    return {
        card,
        update: ({ ofd }) => {
            choice.set(ofd.reachable);
            const queue = ofd.queue ? `; ${t("ofdQueue", { count: count(ofd.queue) })}` : "";
            card.set(t(`ofdIs_${ofd.reachable}`) + queue, ofd.queue ? "warn" : "");
        },
    };
}

function documentCard() {
    const card = new Card("openDocument");
    return { card, update: ({ document }) => card.set(openText(document), document ? "warn" : "") };
}

function openText(document) {
    if (!document)
        return t("noOpenDocument");
    const { type, phase, positions, total } = document;
    return t("openIs", { type: t(`type_${type}`), phase: t(`phase_${phase}`), positions, total: money(total) });
}

function driveCard() {
    const card = new Card("drive");
    return { card, update: ({ drive }) => card.set(driveText(drive), drive.warnings ? "warn" : "", drive.number) };
}

function driveText({ documents, documentsLeft, warnings }) {
    const left = documentsLeft === null ? [] : [t("driveLeft", { count: count(documentsLeft) })];
    const told = warnings ? [t("driveWarnings", { bits: warnings })] : [];
    return [t("driveIs", { count: count(documents) }), ...left, ...told].join("; ");
}
