// What is known of the document that was chosen.

import { Newest } from "./api.js";
import { button, el, russian } from "./dom.js";
import { exchangeLine, exchangeTitle, head } from "./frames.js";
import { count, money, t, time } from "./i18n.js";

// A host that asks for the state each second makes thousands of exchanges between two documents.
const SHOWN_EXCHANGES = 100;

export class Detail {
    constructor(root, { onError }) {
        Object.assign(this, { root, onError, newest: new Newest(), draw: () => this.#nothing() });
    }

    open(api) {
        this.api = api;
        this.number = null;
        this.draw = () => this.#nothing();
        this.draw();
    }

    // The last one that was wanted stays, whichever answer comes last.
    async showDocument(number) {
        const { api } = this;
        const isWanted = () => this.number === number && api === this.api;
        this.number = number;
        try {
            const document = await this.newest.of(api.get(`/documents/${number}`));
            if (document && isWanted())
                this.#show(() => this.#document(document));
        } catch (problem) {
            if (isWanted())
                this.onError(problem);
        }
    }

    showEntry(entry) {
        this.number = null;
        this.#show(() => [el("h3", {}, t("printed", { number: entry.number })),
            el("p", {}, `${t("noDocument")}, ${time(entry.dateTime)}`), pageText(entry.lines)]);
    }

    redraw() {
        this.draw();
    }

    #show(content) {
        this.draw = () => this.root.replaceChildren(...content().flat().filter(Boolean));
        this.draw();
        this.root.scrollTop = 0;
    }

    #nothing() {
        this.root.replaceChildren(el("p", { class: "hint" }, t("nothingChosen")));
    }

    #document(document) {
        return [this.#head(document), refusals(document), tagSection(document.tags), frameSection(document),
            section("text", document.page.length ? pageText(document.page) : el("p", {}, t("notPrinted")))];
    }

    #head({ number, kind, dateTime, fiscalSign, total, page }) {
        const facts = [["dateTime", time(dateTime)], ["fiscalSign", fiscalSign], total && ["total", money(total)]];
        return el("header", {},
            el("h3", {}, `${t("documentNumber", { number })}: `, russian(kind)),
            el("dl", { class: "facts" }, facts.filter(Boolean).map(([key, value]) =>
                el("div", {}, el("dt", {}, t(key)), el("dd", {}, value)))),
            page.length ? el("p", { class: "buttons" }, ["svg", "png", "pdf"].map((form) => this.#save(number, form)))
                : null);
    }

    #save(number, form) {
        return button(`${t("save")} ${form.toUpperCase()}`, async () => {
            try {
                download(await this.api.blob(`/documents/${number}.${form}`), `${number}.${form}`);
            } catch (problem) {
                this.onError(problem);
            }
        });
    }
}

function download(blob, name) {
    const url = URL.createObjectURL(blob);
    el("a", { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 1000);
}

const section = (key, ...content) => el("section", { class: key }, el("h4", {}, t(key)), ...content);

// It may be broader than a telephone, and a keyboard has to get to its end.
const pageText = (lines) => el("pre", { class: "page-text", lang: "ru", tabindex: "0", role: "group",
    "aria-label": t("text") }, lines.join("\n"));

// Marking codes have separators in them that nobody would see.
const CONTROL_PICTURES = 0x2400;
const visible = (text) =>
    text.replace(/[\0-\x1f]/g, (sign) => String.fromCharCode(CONTROL_PICTURES + sign.charCodeAt(0)));

function refusals({ exchanges, refusals: numbers }) {
    if (numbers.length === 0)
        return section("refusals", el("p", { class: "hint" }, t("noRefusals")));
    const refused = exchanges.filter(({ number }) => numbers.includes(number));
    return section("refusals", el("ul", {}, refused.map((exchange) =>
        el("li", { class: "refusal" }, el("strong", {}, exchangeTitle(exchange)), `: ${exchange.error ?? ""}`,
            exchange.reason ? ` (${exchange.reason})` : ""))));
}

function tagSection(tags) {
    return section("tags", el("table", { class: "tags" },
        el("thead", {}, el("tr", {}, head("tag"), head("name"), head("value"))),
        el("tbody", {}, tagRows(tags, 0))));
}

function tagRows(tags, depth) {
    return tags.flatMap(({ tag, name, value, words }) => {
        const isNested = Array.isArray(value);
        const text = isNested ? "" : visible(`${value}${words ? ` (${words})` : ""}`);
        const row = el("tr", { class: `depth-${Math.min(depth, 3)}` }, el("td", {}, String(tag)),
            el("th", { scope: "row" }, russian(name)), el("td", {}, russian(text)));
        return [row, ...(isNested ? tagRows(value, depth + 1) : [])];
    });
}

function frameSection({ exchanges }) {
    if (exchanges.length === 0)
        return section("frames", el("p", { class: "hint" }, t("noFrames")));
    const list = el("div", {}, exchanges.slice(-SHOWN_EXCHANGES).map(exchangeLine));
    const part = section("frames", el("p", {}, t("framesOf", { count: count(exchanges.length) })), list);
    if (exchanges.length > SHOWN_EXCHANGES)
        list.before(earlier(list, exchanges.slice(0, -SHOWN_EXCHANGES)));
    return part;
}

function earlier(list, exchanges) {
    const more = button(t("framesEarlier", { count: count(Math.min(exchanges.length, SHOWN_EXCHANGES)) }), () => {
        list.prepend(...exchanges.slice(-SHOWN_EXCHANGES).map(exchangeLine));
        const rest = exchanges.slice(0, -SHOWN_EXCHANGES);
        more.replaceWith(...(rest.length ? [earlier(list, rest)] : []));
    });
    return more;
}
