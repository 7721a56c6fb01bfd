// Asks a person for the program's token.

import { byId } from "./dom.js";
import { t } from "./i18n.js";

// Gives what was typed; there is no way on without it.
export function askToken(isWrong) {
    const dialog = byId("token-dialog");
    const input = dialog.querySelector("input");
    byId("token-reason").textContent = t(isWrong ? "tokenWrong" : "tokenNeeded");
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
