// Asks a person before what cannot be taken back.

import { byId } from "./dom.js";

export function areYouSure(question, yes) {
    const dialog = byId("sure-dialog");
    byId("sure-text").textContent = question;
    byId("sure-yes").textContent = yes;
    dialog.returnValue = "no";
    dialog.showModal();
    return new Promise((done) => {
        dialog.addEventListener("close", () => done(dialog.returnValue === "yes"), { once: true });
    });
}
