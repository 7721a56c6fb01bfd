// Elements without markup in strings: nothing that a register sends can become markup.

export function el(name, attributes = {}, ...children) {
    const element = document.createElement(name);
    for (const [key, value] of Object.entries(attributes))
        setAttribute(element, key, value);
    element.append(...children.flat().filter((child) => child !== null && child !== undefined));
    return element;
}

function setAttribute(element, key, value) {
    if (key === "on")
        for (const [event, handler] of Object.entries(value))
            element.addEventListener(event, handler);
    else if (value === true)
        element.setAttribute(key, "");
    else if (value !== false && value !== null && value !== undefined)
        element.setAttribute(key, value);
}

export const byId = (id) => document.getElementById(id);

// A screen reader hears of what was set anew, even if it is the same.
export function setText(element, text) {
    if (element.textContent !== text)
        element.textContent = text;
}

// The register's own words are Russian whatever the page's language is; a screen reader has to know.
export const russian = (text) => el("span", { lang: "ru" }, text);

export function button(text, handler, attributes = {}) {
    return el("button", { type: "button", on: { click: handler }, ...attributes }, text);
}

// Calls at once, then at most once in so many milliseconds, and a last time after the last wish.
export function throttled(milliseconds, action) {
    let timer = null;
    let isWanted = false;
    const run = () => {
        timer = null;
        if (!isWanted)
            return;
        isWanted = false;
        timer = setTimeout(run, milliseconds);
        action();
    };
    return () => {
        isWanted = true;
        if (timer === null)
            run();
    };
}
