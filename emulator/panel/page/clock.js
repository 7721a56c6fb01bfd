// The register's clock: shown as it runs, moved by a click.

import { button, el } from "./dom.js";
import { Card, field, unfolding } from "./card.js";
import { count, t } from "./i18n.js";

const HOUR = 3600;

export class ClockCard {
    constructor(api, act) {
        Object.assign(this, { api, act });
        this.panel = this.#panel();
        this.card = new Card("clock", el("div", { class: "choice" },
            button(t("jumpHour"), () => this.#jump(HOUR), { "aria-label": t("jumpHourLabel") }),
            button(t("jumpDay"), () => this.#jump(25 * HOUR), { "aria-label": t("jumpDayLabel") }),
            unfolding("more", "moreClock", this.panel)));
        const timer = setInterval(() => (this.card.root.isConnected ? this.#tick() : clearInterval(timer)), 1000);
    }

    update({ clock }) {
        Object.assign(this, { clock, since: performance.now() });
        this.#tick();
    }

    // Counted as if the register's time were universal: it has no zone.
    #tick() {
        if (!this.clock)
            return;
        const { time, speed } = this.clock;
        const now = Date.parse(`${time}Z`) + (performance.now() - this.since) * speed;
        const text = new Date(now).toISOString().slice(0, 19).replace("T", " ");
        this.card.set(`${text}${speedText(speed)}`, speed === 1 ? "" : "warn");
    }

    #jump(seconds) {
        this.act(() => this.api.post("/clock/jump", { seconds }));
    }

    #panel() {
        const time = el("input", { type: "datetime-local", step: "1", name: "time", required: true });
        const speed = el("input",
            { type: "number", min: "0", max: "100000", step: "any", value: "1", name: "speed", required: true });
        const hours = el("input", { type: "number", step: "any", value: "24", name: "hours", required: true });
        return el("section", { class: "panel" },
            single(field("setTime", time), () => this.#set({ time: withSeconds(time.value) })),
            single(field("setSpeed", speed), () => this.#set({ speed: Number(speed.value) })),
            single(field("jumpBy", hours), () => this.#jump(Math.round(Number(hours.value) * HOUR))));
    }

    #set(change) {
        this.act(() => this.api.put("/clock", change));
    }
}

const withSeconds = (text) => (text.length === 16 ? `${text}:00` : text.slice(0, 19));

function speedText(speed) {
    if (speed === 1)
        return "";
    return speed === 0 ? `, ${t("clockStands")}` : `, ${t("clockSpeed", { speed: count(speed) })}`;
}

function single(labelled, onSubmit) {
    const send = (event) => {
        event.preventDefault();
        onSubmit();
    };
    return el("form", { on: { submit: send } }, labelled, el("button", {}, t("apply")));
}
