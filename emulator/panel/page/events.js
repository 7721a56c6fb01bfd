// Server-sent events by fetch: EventSource cannot send a token.

const FIRST_RETRY = 300;
const LONGEST_RETRY = 3000;
// The server sends a comment each 15 seconds; a line that is silent longer is dead.
const SILENCE = 40000;

// Text in, events out; a portion may end anywhere.
export class EventParser {
    constructor() {
        this.rest = "";
        this.event = {};
    }

    push(text) {
        const lines = (this.rest + text).split(/\r?\n/);
        this.rest = lines.pop();
        return lines.map((line) => this.#line(line)).filter((event) => event !== null);
    }

    #line(line) {
        if (line === "")
            return this.#finish();
        const [, field, value] = /^([^:]*):? ?(.*)$/.exec(line);
        if (field === "data")
            this.event.data = this.event.data === undefined ? value : `${this.event.data}\n${value}`;
        else if (field)
            this.event[field] = value;
        return null;
    }

    #finish() {
        const event = this.event;
        this.event = {};
        return event.data === undefined && event.event === undefined ? null : event;
    }
}

// Goes on for ever: onOpen each time the stream is there, onLost(fault) when it is not, also by a fault of onOpen, onEvent(kind, data)
// between.
export class EventFeed {
    constructor(access, url, { onOpen, onLost, onEvent }) {
        this.access = access;
        this.url = url;
        this.handlers = { onOpen, onLost, onEvent };
        this.lastId = null;
        this.stopping = null;
    }

    start() {
        if (this.stopping)
            return;
        this.stopping = new AbortController();
        this.#run(this.stopping.signal);
    }

    stop() {
        this.stopping?.abort();
        this.stopping = null;
    }

    async #run(stopped) {
        let retry = FIRST_RETRY;
        while (!stopped.aborted) {
            const { wasOpen, fault } = await this.#once(stopped);
            if (stopped.aborted)
                return;
            this.handlers.onLost(fault);
            retry = wasOpen ? FIRST_RETRY : Math.min(retry * 2, LONGEST_RETRY);
            await new Promise((done) => setTimeout(done, retry));
        }
    }

    async #once(stopped) {
        let wasOpen = false;
        let fault = null;
        const attempt = new AbortController();
        const watch = new Watchdog(() => attempt.abort());
        const signal = AbortSignal.any([stopped, attempt.signal]);
        try {
            const reader = await this.#open(signal);
            await this.handlers.onOpen();
            wasOpen = true;
            await this.#read(reader, watch);
        } catch (error) {
            // The program ended, or the line did: another try comes.
            fault = error;
        } finally {
            watch.end();
            attempt.abort();
        }
        return { wasOpen, fault };
    }

    async #open(signal) {
        const headers = { Accept: "text/event-stream", ...(this.lastId && { "Last-Event-ID": this.lastId }) };
        const response = await this.access.fetch(this.url, { headers, signal });
        if (!response.ok)
            throw new Error(String(response.status));
        return response.body.pipeThrough(new TextDecoderStream()).getReader();
    }

    async #read(reader, watch) {
        const parser = new EventParser();
        for (;;) {
            watch.feed();
            const { done, value } = await reader.read();
            if (done)
                return;
            parser.push(value).forEach((event) => this.#take(event));
        }
    }

    #take({ id, event, data }) {
        this.lastId = id ?? this.lastId;
        this.handlers.onEvent(event ?? "message", data ? JSON.parse(data) : {});
    }
}

class Watchdog {
    constructor(bark) {
        this.bark = bark;
    }

    feed() {
        this.end();
        this.timer = setTimeout(this.bark, SILENCE);
    }

    end() {
        clearTimeout(this.timer);
    }
}
