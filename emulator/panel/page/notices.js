// What a page says of its own accord.

import { button, byId, el } from "./dom.js";
import { t } from "./i18n.js";

const NOTICE = 12000;
const MOST_NEWS = 20;

// Stays for a while, or until it is closed.
export function notify(text) {
    const notice = el("p", { class: "notice" }, text, " ",
        button("×", () => notice.remove(), { "aria-label": t("close") }));
    byId("notices").append(notice);
    setTimeout(() => notice.remove(), NOTICE);
    return notice;
}

// For who hears the page.
export function say(text) {
    byId("news").append(el("p", {}, text));
    while (byId("news").childElementCount > MOST_NEWS)
        byId("news").firstChild.remove();
}
