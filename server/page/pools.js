// Pools: registers that are posted to together, and what waits that none of them has yet.

import { el, setText } from "./dom.js";
import { t } from "./i18n.js";
import { absenceName, facts, moment, poolName, registerState, tone } from "./labels.js";

export class Pools {
    constructor(section) {
        Object.assign(this, { section, all: [] });
        this.root = section.querySelector(".cards");
    }

    get names() {
        return this.all.map(({ name }) => name);
    }

    set(pools) {
        this.all = pools;
        this.redraw();
    }

    // What an event says of a register.
    note({ name, state, waiting, pools }) {
        const member = (of) => pools?.find((one) => one.name === of) ?? {};
        this.set(this.all.map((pool) => ({ ...pool, registers: pool.registers.map((register) =>
            (register.name === name ? { ...register, ...member(pool.name), name, state, waiting } : register)) })));
    }

    redraw() {
        this.section.hidden = this.all.length === 0;
        const told = JSON.stringify(this.all) + t("pools");
        if (told === this.told)
            return;
        this.told = told;
        this.root.replaceChildren(...this.all.map(card));
    }
}

function card({ name, queue: { queued, oldest }, registers }) {
    const heading = el("h3", { id: `pool-${name}` });
    setText(heading, poolName(name));
    const waits = oldest ? t("queueSince", { count: queued, time: moment(oldest) }) : queued;
    return el("article", { class: "card", "data-pool": name, "aria-labelledby": heading.id }, heading,
        el("dl", { class: "facts" }, facts([["queue", waits, queued > 0 ? "warn" : ""]])),
        el("ul", { class: "members" }, registers.map(member)));
}

function member(register) {
    const { name, absent, state } = register;
    const text = absent ? absenceName(absent) : state && registerState(register);
    return el("li", {}, name, ": ", el("span", { class: `state ${absent ? "warn" : tone(state)}` }, text || t("notKnown")));
}
