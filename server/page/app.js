// The page of frserver: puts the parts together.

import { Access, Api, Newest, Problem } from "./api.js";
import { Attention } from "./attention.js";
import { DocumentView } from "./document.js";
import { Documents } from "./documents.js";
import { byId, setText, throttled } from "./dom.js";
import { EventFeed } from "./events.js";
import { language, onLanguage, setLanguage, t, translate } from "./i18n.js";
import { documentState, kindName, registerState, waitingName } from "./labels.js";
import { notify, say } from "./notices.js";
import { Outgoing } from "./outgoing.js";
import { documentPlaceName, placeName, placeOfPool, placeQuery } from "./places.js";
import { Pools } from "./pools.js";
import { ReceiptForm } from "./receipt.js";
import { Registers } from "./registers.js";
import { areYouSure } from "./sure.js";
import { tabs } from "./tabs.js";
import { askToken } from "./token.js";

// A busy service makes many documents a second; a person reads some changes a second.
const OFTEN = 200;
// What a register tells of itself grows old without an event.
const ANEW = 30000;
const MOST_UNKNOWN = 50;

const access = new Access(askToken);
const api = new Api(access, "/v1");
const page = { connection: "connecting", trouble: null, trial: null };
const newest = { registers: new Newest(), unknown: new Newest(), trial: new Newest() };

const outgoing = new Outgoing(access, { onAnswer: answered, onChange: showOutgoing });
const isBusy = (desk) => outgoing.isOpen(desk);
const registers = new Registers(byId("registers"), { report, hold, isBusy });
const pools = new Pools(byId("pools"));
const attention = new Attention({ resolve, accept, choose });
const documents = new Documents(api, { onChoose: choose, onError: complain });
const detail = new DocumentView(byId("document"), api, { resolve, withdraw, move });
const receipt = new ReceiptForm(byId("receipt"), { check, sell, isOpen: (name) => isBusy(`sell:${name}`) });
const selectTab = tabs(["document", "receipt"], () => {});

const readDocuments = throttled(OFTEN, () => quietly(documents.read()));
const readDetail = throttled(OFTEN, () => quietly(detail.again()));
const readUnknown = throttled(OFTEN, () => quietly(updateUnknown()));
const readRegisters = throttled(OFTEN, () => quietly(updateRegisters()));

// The line to the service comes and goes, and each time it comes all is read anew; what fails between is no news.
function quietly(promise) {
    promise.catch(() => {});
}

async function act(request) {
    try {
        await request();
        readRegisters();
    } catch (problem) {
        complain(problem);
    }
}

function problemText(problem) {
    if (!(problem instanceof Problem))
        return t("noAnswer");
    return problem.status === 403 ? t("notAllowed") : problem.message;
}

// What the line is told to be troubled by; the registers that wait for the journal say more.
function troubleText(problem) {
    return problem?.type === "journal" ? waitingName("journal") : problemText(problem);
}

function complain(problem) {
    notify(problemText(problem));
}

// What people do.

const documentPath = (id, verb = "") => `/documents/${encodeURIComponent(id)}${verb}`;
const registerPath = (name, verb) => `/registers/${encodeURIComponent(name)}/${verb}`;

function choose(id) {
    selectTab("document");
    documents.mark(id);
    detail.show(id).catch(complain);
    if (matchMedia("(max-width: 799px)").matches)
        byId("tab-document").scrollIntoView({ block: "start" });
}

function resolve(id, answer) {
    return act(async () => {
        await api.post(documentPath(id, "/resolve"), answer);
        readAll();
    });
}

function accept(name, note) {
    return act(() => api.post(registerPath(name, "accept"), { note }));
}

function withdraw(id) {
    return act(() => api.remove(documentPath(id)));
}

function move(id, place) {
    return act(() => api.post(documentPath(id, "/move"), placeQuery(place)));
}

function hold(name, isHeld) {
    return act(() => api.post(registerPath(name, isHeld ? "resume" : "pause"), {}));
}

async function report(name, type) {
    if (type === "zReport" && !(await areYouSure(t("sureZ", { name }), t("zReport"))))
        return;
    outgoing.send(`${type}:${name}`, name, { type });
}

function sell(name, body) {
    page.trial = null;
    receipt.say();
    outgoing.send(`sell:${name}`, name, body);
}

function check(place, body) {
    return act(async () => {
        const response = await access.fetch(`/v1/check?${new URLSearchParams(placeQuery(place))}`, {
            method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(body) });
        const answer = await response.json();
        return response.ok ? receipt.showCheck(answer) : receipt.showWrong(answer);
    });
}

// What came of what they did.

function answered(desk, { id }, { status, body }) {
    const isTrial = desk.startsWith("sell:");
    if (isTrial && body.state)
        page.trial = id;
    if (body.state && !isTrial)
        return showReport(id, body);
    if (body.state) {
        receipt.showDocument(body);
        // It may have come to its end before the answer that it was taken.
        return quietly(showTrial(id));
    }
    if (isTrial)
        return receipt.showWrong(status === 403 ? { title: t("notAllowed") } : body);
    return complain(new Problem(status, body.title, body.detail));
}

function showReport(id, document) {
    choose(id);
    if (document.state === "notIssued")
        notify(document.error?.text ?? documentState(document));
}

function showOutgoing() {
    const open = outgoing.unanswered();
    byId("unanswered").hidden = open.length === 0;
    setText(byId("unanswered"), open.map(({ id, register, body }) =>
        t("sentAgain", { kind: kindName(body.type), register: placeName(register), id })).join(" "));
    registers.show();
    receipt.show();
}

async function showTrial(id) {
    const document = await newest.trial.of(api.get(documentPath(id)));
    if (document && id === page.trial)
        receipt.showDocument(document);
}

// What is shown.

async function updateRegisters() {
    const { moment } = registers;
    const answer = await newest.registers.of(Promise.all([api.get("/registers"), api.get("/pools")]));
    if (!answer)
        return;
    const [{ registers: all, notConfigured }, { pools: told }] = answer;
    showRegisters(all, told);
    for (const register of registers.notedSince(moment)) {
        registers.update(register);
        pools.note(register);
    }
    attention.setRegisters(registers.all, notConfigured);
    if (registers.all.some(isLost))
        readUnknown();
}

function showRegisters(all, told) {
    const names = all.map(({ name }) => name);
    const wasSame = told.map(({ name }) => name).join() === pools.names.join();
    pools.set(told);
    if (wasSame && names.join() === registers.names.join())
        return all.forEach((register) => registers.update(register));
    registers.set(all);
    const places = [...names, ...pools.names.map(placeOfPool)];
    [documents, receipt].forEach((part) => part.setRegisters(places));
    return Object.assign(detail, { registers: names, pools: pools.names });
}

async function updateRights() {
    const { role } = await api.get("/me");
    document.body.dataset.role = role;
}

const isLost = ({ state, waiting, queue }) => (state === "unreachable" || waiting === "otherMachine") && queue.running > 0;

async function updateUnknown() {
    // What was begun at a register whose service is gone is nobody's but a person's to tell.
    const lost = registers.all.filter(isLost);
    const lists = await newest.unknown.of(Promise.all([{ state: "unknown" },
        ...lost.map(({ name }) => ({ state: "running", register: name }))]
        .map((query) => api.get("/documents", { ...query, limit: MOST_UNKNOWN }))));
    if (lists)
        attention.setDocuments(lists.flatMap(({ documents: found }) => found));
}

function readAll() {
    [readDocuments, readDetail, readUnknown, readRegisters].forEach((read) => read());
}

const news = {
    document({ id, register, pool, kind, state, reason, documentNumber }) {
        documents.note({ id, state, reason, register, documentNumber });
        readDocuments();
        readUnknown();
        readRegisters();
        if (id === detail.id)
            readDetail();
        if (id === page.trial)
            quietly(showTrial(id));
        if (state !== "queued" && state !== "running")
            say(t("newsDocument", { register: documentPlaceName({ register, pool }), kind: kindName(kind),
                number: documentNumber ?? "", state: documentState({ state, reason }) }));
    },
    register({ register: name, ...view }) {
        const register = { ...view, name };
        const before = registers.known.get(name);
        if (!before)
            readRegisters();
        registers.note(register);
        pools.note(register);
        attention.setRegisters(registers.all);
        // What was under way when the service ended is settled with the register's start, without an event of its own.
        [readDocuments, readUnknown, readDetail].forEach((read) => read());
        const isNews = before && registerState(before) !== registerState(register);
        if (isNews && ![before.state, register.state].includes("making"))
            say(`${name}: ${registerState(register)}`);
    },
    // More has happened than the service keeps of events, or it was started anew.
    reset: readAll,
};

function showConnection(connection) {
    page.connection = connection;
    byId("connection").textContent = t(connection, { what: troubleText(page.trouble) });
    byId("connection").dataset.is = connection;
}

const feed = new EventFeed(access, "/v1/events", {
    onEvent: (kind, data) => news[kind]?.(data),
    // A service that says why it cannot tell is there.
    onLost(fault) {
        page.trouble = fault instanceof Problem ? fault : null;
        showConnection(page.trouble ? "troubled" : "lost");
    },
    async onOpen() {
        await Promise.all([updateRights(), updateRegisters(), documents.read(), updateUnknown(), detail.again()]);
        showConnection("connected");
        outgoing.resume();
    },
});

function draw() {
    translate(document);
    byId("language").value = language();
    showConnection(page.connection);
    [registers, pools, documents, attention, detail, receipt].forEach((part) => part.redraw());
    showOutgoing();
}

function listen() {
    onLanguage(draw);
    byId("language").addEventListener("change", ({ target }) => setLanguage(target.value));
    setInterval(() => document.hidden || readRegisters(), ANEW);
    // A browser has six connections to a program for all of its tabs together.
    document.addEventListener("visibilitychange", () => (document.hidden ? feed.stop() : feed.start()));
}

listen();
draw();
feed.start();
