// Requests to the interface of the program that served the page.

export class Problem extends Error {
    constructor(status, title, detail, type) {
        super(detail || title);
        this.status = status;
        this.type = type;
    }
}

async function problemOf(response) {
    try {
        const problem = await response.json();
        return new Problem(response.status, problem.title, problem.detail, problem.type);
    } catch {
        return new Problem(response.status, response.statusText || String(response.status));
    }
}

// Answers may overtake each other: what is asked is shown as it was told to the latest question.
export class Newest {
    constructor() {
        Object.assign(this, { asked: 0, answered: 0 });
    }

    // The answer, or null when a later question has been answered before.
    async of(answer) {
        const question = ++this.asked;
        const told = await answer;
        if (question < this.answered)
            return null;
        this.answered = question;
        return told;
    }
}

// Where the token is between two loads of the page: this tab alone.
const KEY = "spf-token";

// One for a page. askToken(isWrong) has to give a token when the program wants one.
export class Access {
    constructor(askToken) {
        this.askToken = askToken;
        this.asking = null;
    }

    // A token that was refused is asked for again, once for all requests that wait for it.
    async fetch(url, options = {}) {
        for (;;) {
            const token = sessionStorage.getItem(KEY);
            const response = await fetch(url, this.#withToken(options, token));
            if (response.status !== 401)
                return response;
            await this.#newToken(token);
        }
    }

    #withToken(options, token) {
        const authorization = token ? { Authorization: `Bearer ${token}` } : {};
        return { cache: "no-store", ...options, headers: { ...options.headers, ...authorization } };
    }

    async #newToken(refused) {
        if (sessionStorage.getItem(KEY) !== refused)
            return;
        this.asking ??= this.askToken(refused !== null);
        const token = await this.asking;
        this.asking = null;
        sessionStorage.setItem(KEY, token);
    }
}

// The routes below one address, such as "/v1/registers/2".
export class Api {
    constructor(access, root) {
        this.access = access;
        this.root = root;
    }

    async request(method, path, body) {
        const json = { headers: { "Content-Type": "application/json" }, body: JSON.stringify(body) };
        const options = { method, ...(body === undefined ? {} : json) };
        const response = await this.access.fetch(this.root + path, options);
        if (!response.ok)
            throw await problemOf(response);
        return response;
    }

    async get(path, query = {}) {
        const text = new URLSearchParams(query).toString();
        return (await this.request("GET", path + (text && `?${text}`))).json();
    }

    put(path, body) {
        return this.request("PUT", path, body);
    }

    post(path, body) {
        return this.request("POST", path, body);
    }

    remove(path) {
        return this.request("DELETE", path);
    }

    async blob(path) {
        return (await this.request("GET", path)).blob();
    }
}
