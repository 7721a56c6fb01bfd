// The page's language: the browser's, until another one is chosen.

import { words } from "./words.js";

const KEY = "spf-language";
const changes = new EventTarget();
let current = chosen() ?? browsers();

function chosen() {
    const language = localStorage.getItem(KEY);
    return language in words ? language : null;
}

function browsers() {
    const known = navigator.languages.map((tag) => tag.slice(0, 2)).find((tag) => tag in words);
    return known ?? "en";
}

export const language = () => current;

export function setLanguage(next) {
    current = next;
    localStorage.setItem(KEY, next);
    changes.dispatchEvent(new Event("change"));
}

export const onLanguage = (handler) => changes.addEventListener("change", handler);

// The text of that key, with {name} replaced by values.name.
export function t(key, values = {}) {
    const text = words[current][key] ?? key;
    return text.replace(/\{(\w+)\}/g, (whole, name) => values[name] ?? whole);
}

export const has = (key) => key in words[current];

// What stands in the markup: data-t is the text, data-t-label and data-t-placeholder are attributes.
export function translate(root) {
    document.documentElement.lang = current;
    for (const element of root.querySelectorAll("[data-t]"))
        element.textContent = t(element.dataset.t);
    for (const element of root.querySelectorAll("[data-t-label]"))
        element.setAttribute("aria-label", t(element.dataset.tLabel));
    for (const element of root.querySelectorAll("[data-t-placeholder]"))
        element.placeholder = t(element.dataset.tPlaceholder);
}

export function money(text) {
    const form = { minimumFractionDigits: 2, maximumFractionDigits: 2 };
    return `${Number(text).toLocaleString(current, form)} ₽`;
}

export const count = (number) => number.toLocaleString(current);

// "2026-03-01T09:00:00" as a register tells its time; there is no zone to count with.
export const time = (text) => (text ?? "").slice(0, 19).replace("T", " ");

// Of "2026-03-01T09:00:00.123+03:00": what differs between frames.
export const lineTime = (text) => text.slice(11, 23);
