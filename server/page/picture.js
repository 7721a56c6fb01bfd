// The picture of a receipt, drawn once somebody wants to see it.

import { el } from "./dom.js";
import { language, t } from "./i18n.js";
import { isReceipt, kindName } from "./labels.js";

export class DocumentPicture {
    constructor(api) {
        Object.assign(this, { api, shown: null, isOpen: false });
    }

    // The same element as before where the same is to be seen, so that nothing jumps; one that is open stays so for the
    // next document. Null for a document without a picture.
    of({ id, kind, accepted, register, body }) {
        if (!isReceipt(kind) || !body)
            return null;
        const wanted = [id, accepted, register, language()].join();
        if (wanted !== this.shown)
            this.#make(id, kind);
        this.shown = wanted;
        return this.root;
    }

    #make(id, kind) {
        const place = el("div", { class: "picture" });
        const root = el("details", { open: this.isOpen }, el("summary", {}, t("picture")),
            el("p", { class: "hint" }, t("pictureHint")), place);
        root.addEventListener("toggle", () => {
            this.isOpen = root.open;
            if (root.open && !place.querySelector("img"))
                this.#load(id, kind, place);
        });
        this.root = root;
    }

    // An <img> cannot send a token.
    async #load(id, kind, place) {
        try {
            const url = URL.createObjectURL(await this.api.blob(`/documents/${encodeURIComponent(id)}/picture`));
            const image = el("img", { alt: t("pictureOf", { kind: kindName(kind), id }), src: url });
            image.addEventListener("load", () => URL.revokeObjectURL(url), { once: true });
            place.replaceChildren(image);
        } catch (problem) {
            place.replaceChildren(el("p", { class: "reason" }, t("noPicture", { why: problem.message })));
        }
    }
}
