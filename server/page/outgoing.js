// What the page has posted. The id of a document is made here and kept with its body until the service has answered: any
// 5xx, time-out or answer that is not the service's means the same id again.

import { documentsPath } from "./places.js";

const KEY = "frserver-outgoing";
const PATIENCE = 20000;
const FIRST_RETRY = 1000;
const LONGEST_RETRY = 10000;

const newId = () => `page:${Date.now().toString(36)}:${crypto.getRandomValues(new Uint32Array(2)).join("")}`;

// One document at a time for each desk, such as the form or the button of a report at one register. After an answer that
// the document is not issued the next one of that desk is another attempt, under the same id.
export class Outgoing {
    constructor(access, { onAnswer, onChange }) {
        Object.assign(this, { access, onAnswer, onChange });
        this.posts = new Map(JSON.parse(sessionStorage.getItem(KEY) ?? "[]"));
        this.atWork = new Set();
    }

    // The register may be the place of a pool.
    send(desk, register, body) {
        if (this.isOpen(desk))
            return;
        const id = this.posts.get(desk)?.id ?? newId();
        this.#keep(desk, { id, register, body, isOpen: true, failures: 0 });
        this.#run(desk);
    }

    // Whether nobody knows yet that the service has it.
    isOpen(desk) {
        return this.posts.get(desk)?.isOpen ?? false;
    }

    unanswered() {
        return [...this.posts.values()].filter(({ isOpen, failures }) => isOpen && failures > 0);
    }

    // What the page before a reload had no answer to, and when the service is there again.
    resume() {
        for (const [desk, { isOpen }] of this.posts)
            if (isOpen)
                this.#run(desk);
    }

    #keep(desk, post) {
        if (post)
            this.posts.set(desk, post);
        else
            this.posts.delete(desk);
        sessionStorage.setItem(KEY, JSON.stringify([...this.posts]));
        this.onChange();
    }

    async #run(desk) {
        if (this.atWork.has(desk))
            return;
        this.atWork.add(desk);
        const post = this.posts.get(desk);
        const answer = await this.#post(post);
        this.atWork.delete(desk);
        if (answer)
            this.#take(desk, post, answer);
        else
            this.#later(desk, post);
    }

    #later(desk, post) {
        const failures = post.failures + 1;
        this.#keep(desk, { ...post, failures });
        setTimeout(() => this.isOpen(desk) && this.#run(desk), Math.min(FIRST_RETRY * 2 ** failures, LONGEST_RETRY));
    }

    #take(desk, post, answer) {
        const isItsEnd = answer.status < 300 || answer.body.state === "unknown";
        this.#keep(desk, isItsEnd ? null : { ...post, isOpen: false });
        this.onAnswer(desk, post, answer);
    }

    // Nothing when there was no answer of the service.
    async #post({ id, register, body }) {
        try {
            const response = await this.access.fetch(`/v1${documentsPath(register)}`, {
                method: "POST",
                headers: { "Content-Type": "application/json", Prefer: "wait=0" },
                body: JSON.stringify({ ...body, id }),
                signal: AbortSignal.timeout(PATIENCE),
            });
            const answer = await response.json();
            return response.status >= 500 ? null : { status: response.status, body: answer };
        } catch {
            return null;
        }
    }
}
