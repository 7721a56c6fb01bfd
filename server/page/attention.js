// What waits for a person: documents that nobody knows the end of, registers that sell nothing until somebody has looked.

import { button, byId, el } from "./dom.js";
import { t } from "./i18n.js";
import { kindName, moment, waitingName } from "./labels.js";
import { acceptance, resolution } from "./resolve.js";
import { waitingNote } from "./waiting.js";

// A person's word lets the register go on, or the register or its configuration has to be changed.
const ACCEPTED = ["needsReview", "newDrive", "otherMachine"];
const TO_MEND = ["wrongRegister", "testDrive"];

export class Attention {
    constructor({ resolve, accept, choose }) {
        Object.assign(this, { resolve, accept, choose, items: new Map(), documents: [], registers: [], missing: [] });
    }

    setDocuments(documents) {
        this.documents = documents;
        this.#show();
    }

    // The second ones have left the configuration, and documents wait for them; an event tells nothing of those.
    setRegisters(registers, missing = this.missing) {
        Object.assign(this, { registers, missing });
        this.#show();
    }

    redraw() {
        this.items.clear();
        byId("attention-list").replaceChildren();
        this.#show();
    }

    // What is still there stays as it is, with what somebody has begun to type.
    #show() {
        const wanted = new Map([
            ...this.registers.filter(({ waiting }) => [...ACCEPTED, ...TO_MEND].includes(waiting))
                .map((register) => [`${register.name} ${register.waiting} ${register.waitingText}`, () => this.#register(register)]),
            ...this.missing.map(({ name, queue: { queued } }) =>
                [`${name} missing ${queued}`, () => this.#missing(name, queued)]),
            ...this.documents.map((document) => [document.id, () => this.#document(document)]),
        ]);
        for (const [key, item] of this.items)
            if (!wanted.has(key)) {
                item.remove();
                this.items.delete(key);
            }
        const list = byId("attention-list");
        [...wanted].forEach(([key, make], place) => {
            const item = this.items.get(key) ?? make();
            this.items.set(key, item);
            if (list.children[place] !== item)
                list.insertBefore(item, list.children[place] ?? null);
        });
        byId("attention").hidden = wanted.size === 0;
    }

    #register({ name, waiting, waitingText }) {
        const { text, lang } = waitingNote({ waiting, waitingText });
        return el("article", { "data-review": name },
            el("h3", {}, `${name}: ${waitingName(waiting)}`), text && el("p", { lang }, text),
            el("p", {}, t(ACCEPTED.includes(waiting) ? "howToAccept" : "howToMend")),
            ACCEPTED.includes(waiting) ? acceptance(name, this.accept) : null);
    }

    #missing(name, count) {
        return el("article", { "data-missing": name }, el("h3", {}, t("missingRegister", { name, count })),
            el("p", {}, t("howToMove")));
    }

    #document({ id, kind, register, begun, accepted }) {
        const values = { kind: kindName(kind), register, time: moment(begun ?? accepted) };
        return el("article", { "data-unknown": id },
            el("h3", {}, t("unknownDocument", values), " ", button(id, () => this.choose(id))),
            el("p", {}, t("howToResolve")), resolution(id, this.resolve));
    }
}
