// Asks a person for the program's token.

import { el } from "./dom.js";
import { t } from "./i18n.js";

const reason = el("p", { id: "token-reason" });
const input = el("input", { type: "password", name: "token", autocomplete: "off", required: true });
const dialog = el("dialog", { id: "token-dialog", "aria-labelledby": "token-heading" },
    el("form", { method: "dialog" }, el("h2", { id: "token-heading", "data-t": "tokenHeading" }), reason,
        el("label", {}, el("span", { "data-t": "token" }), " ", input), " ", el("button", { "data-t": "go" })));
// A part of the page like others: translate() finds it.
document.body.append(dialog);

// Gives what was typed; there is no way on without it.
export function askToken(isWrong) {
    reason.textContent = t(isWrong ? "tokenWrong" : "tokenNeeded");
    input.value = "";
    dialog.showModal();
    return new Promise((done) => {
        const close = () => {
            if (!input.value)
                return dialog.showModal();
            dialog.removeEventListener("close", close);
            return done(input.value.trim());
        };
        dialog.addEventListener("close", close);
    });
}
