// The page of spf-emulator: puts the parts together.

import { Access, Api, Newest, Problem } from "./api.js";
import { Cards } from "./cards.js";
import { Detail } from "./detail.js";
import { byId, el, setText, throttled } from "./dom.js";
import { EventFeed } from "./events.js";
import { Exchanges } from "./exchanges.js";
import { Found } from "./found.js";
import { language, money, onLanguage, setLanguage, t, translate } from "./i18n.js";
import { notify, say } from "./notices.js";
import { tabs } from "./tabs.js";
import { Tape } from "./tape.js";
import { askToken } from "./token.js";

const ROOT = "/v1";
// A register at work makes hundreds of exchanges a second; a person reads some changes a second.
const OFTEN = 150;
// A shift becomes too long without an event.
const STATE_AGE = 15000;

const access = new Access(askToken);
const program = new Api(access, ROOT);
const page = { api: null, register: null, run: null, connection: "connecting" };
const newestState = new Newest();

const cards = new Cards(byId("cards"), byId("glance"), act);
const detail = new Detail(byId("document"), { onError: complain });
const exchanges = new Exchanges(byId("exchange-list"), byId("exchange"), byId("refused-only"));
const found = new Found({ onChoose: chooseDocument, onSearch: forgetSearch, onError: complainOfSearch,
    onClose: () => tape.uncovered() });
const tape = new Tape(byId("tape"), { onChoose: chooseEntry, onFollow: showFollow });
const selectTab = tabs(["document", "exchanges"], (name) => quietly(exchanges.setVisible(name === "exchanges")));

const readState = throttled(OFTEN, () => quietly(updateState()));
const readFaults = throttled(OFTEN, () => quietly(cards.updateFaults()));
const readExchanges = throttled(OFTEN, () => quietly(exchanges.grown()));
const readAllAnew = throttled(OFTEN, () => quietly(beginAnew()));
const readRegisters = throttled(1000, () => quietly(listRegisters()));
const followDocument = throttled(OFTEN, () => tape.isFollowing && page.newest && detail.showDocument(page.newest));

// The line to the program comes and goes, and each time it comes all is read anew; what fails between is no news.
function quietly(promise) {
    promise.catch(() => {});
}

// What was wrong with one attempt is not with the next.
async function act(request) {
    page.actNotice?.remove();
    try {
        await request();
        readState();
    } catch (problem) {
        page.actNotice = notify(problemText(problem));
    }
}

// The interface speaks English; what people meet is said in theirs.
const PROBLEMS = { 404: "gone", 409: "clockBack" };

function problemText(problem) {
    if (!(problem instanceof Problem))
        return t("noAnswer");
    if (problem.status === 409 && problem.message.startsWith("The power is off"))
        return t("powerIsOff");
    return problem.status in PROBLEMS ? t(PROBLEMS[problem.status]) : problem.message;
}

function complain(problem) {
    notify(problemText(problem));
}

function complainOfSearch(problem) {
    forgetSearch();
    page.searchNotice = notify(problem.status === 400 ? t("badSearch") : problemText(problem));
}

// What was wrong with one search is not with the next.
function forgetSearch() {
    page.searchNotice?.remove();
}

async function updateState() {
    const { api } = page;
    const state = await newestState.of(api.get("/state"));
    if (!state || api !== page.api)
        return;
    // From here on nothing is missed, even if no event comes before the line is lost.
    feed.lastId ??= state.lastEvent;
    page.run = runOf(state.lastEvent);
    byId("where").textContent = `${state.line} · ${state.identity.serialNumber}`;
    byId("tape").dataset.empty = t("emptyTape", { line: state.line });
    byId("stopped").hidden = state.stopped === null;
    setText(byId("stopped"), state.stopped === null ? "" : t("stopped", { reason: state.stopped }));
    cards.update(state);
}

const runOf = (eventId) => eventId.slice(0, eventId.lastIndexOf("-"));

async function listRegisters() {
    const { registers } = await program.get("/registers");
    byId("registers").hidden = registers.length < 2;
    byId("where").hidden = registers.length > 1;
    byId("register").replaceChildren(...registers.map(({ register, serialNumber, line }) =>
        el("option", { value: register }, `${register}: ${serialNumber} (${line})`)));
    byId("register").value = page.register;
    return registers;
}

async function openRegister(number) {
    page.register = number;
    page.api = new Api(access, `${ROOT}/registers/${number}`);
    byId("register").value = number;
    history.replaceState(null, "", number === 1 ? location.pathname : `#${number}`);
    [cards, found].forEach((part) => part.open(page.api));
    await beginAnew();
}

// All that is shown of documents and exchanges is of another register, or of another time of this one.
async function beginAnew() {
    const { api } = page;
    page.newest = null;
    detail.open(api);
    await Promise.all([updateState(), tape.open(api), exchanges.open(api), found.again()]);
    await showNewest(api);
}

async function showNewest(api) {
    const { documents } = await api.get("/documents", { limit: 1 });
    if (api !== page.api || documents.length === 0)
        return;
    page.newest = documents[0].number;
    followDocument();
}

function chooseEntry(entry) {
    selectTab("document");
    if (entry.document)
        detail.showDocument(entry.document);
    else
        detail.showEntry(entry);
    bringIntoView();
}

function chooseDocument(number) {
    selectTab("document");
    detail.showDocument(number);
    tape.follow(false);
    quietly(tape.mark(number));
    bringIntoView();
}

// On a narrow screen the document stands below the tape.
function bringIntoView() {
    if (matchMedia("(max-width: 799px)").matches)
        byId("tab-document").scrollIntoView({ block: "start" });
}

function showFollow(isFollowing) {
    byId("follow").setAttribute("aria-pressed", String(isFollowing));
    if (isFollowing)
        followDocument();
}

const news = {
    document({ number, type, total }) {
        const words = { number, type: t(`type_${type}`), total: total ? money(total) : "" };
        say(t(number ? "newsDocument" : "newsPlain", words));
        page.newest = number ?? page.newest;
        followDocument();
        readState();
    },
    tape: ({ number }) => tape.grown(number),
    exchange() {
        readExchanges();
        readState();
    },
    refusal: ({ name, reason }) => say(t("newsRefusal", { name, reason })),
    fault({ mode }) {
        say(t("newsFault", { mode }));
        readFaults();
    },
    state({ part }) {
        if (part === "faults" || part === "register")
            readFaults();
        if (part === "register")
            readAllAnew();
        readState();
    },
    // More has happened than the program keeps of events, or it is another run of the program.
    reset() {
        page.run = null;
        quietly(readAnew());
    },
};

function onEvent(kind, data) {
    if (data.register === undefined || data.register === page.register)
        news[kind]?.(data);
    else if (kind === "state" || kind === "document")
        readRegisters();
}

// Another program may be there than before: with other registers, and with another tape.
async function readAnew() {
    const { run } = page;
    const registers = await listRegisters();
    const isThere = registers.some(({ register }) => register === page.register);
    if (!page.api || !isThere)
        return openRegister(isThere ? page.register : 1);
    readFaults();
    await updateState();
    return run === page.run ? Promise.all([tape.sync(), exchanges.grown()]) : beginAnew();
}

function showConnection(connection) {
    page.connection = connection;
    byId("connection").textContent = t(connection);
    byId("connection").dataset.is = connection;
}

const feed = new EventFeed(access, `${ROOT}/events?all=true`, {
    onEvent,
    onLost: () => showConnection("lost"),
    async onOpen() {
        await readAnew();
        showConnection("connected");
    },
});

function draw() {
    translate(document);
    byId("language").value = language();
    showConnection(page.connection);
    [tape, detail, exchanges, found].forEach((part) => part.redraw());
    if (page.api) {
        cards.render();
        readState();
    }
}

function listen() {
    onLanguage(draw);
    byId("language").addEventListener("change", ({ target }) => setLanguage(target.value));
    byId("register").addEventListener("change", ({ target }) => quietly(openRegister(Number(target.value))));
    byId("follow").addEventListener("click", () => tape.follow(!tape.isFollowing));
    setInterval(() => document.hidden || !page.api || readState(), STATE_AGE);
    // A browser has six connections to a program for all of its tabs together.
    document.addEventListener("visibilitychange", () => (document.hidden ? feed.stop() : feed.start()));
}

page.register = Number(location.hash.slice(1)) || 1;
byId("control").open = matchMedia("(min-width: 800px)").matches;
listen();
draw();
feed.start();
