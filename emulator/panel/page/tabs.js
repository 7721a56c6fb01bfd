// Tabs by mouse and keyboard; the panel of tab-NAME is NAME.

import { byId } from "./dom.js";

const STEPS = { ArrowRight: 1, ArrowLeft: -1 };

export function tabs(names, onSelect) {
    const select = (name) => {
        for (const other of names)
            mark(other, other === name);
        onSelect(name);
    };
    for (const name of names) {
        byId(`tab-${name}`).addEventListener("click", () => select(name));
        byId(`tab-${name}`).addEventListener("keydown", ({ key }) => step(names, name, STEPS[key], select));
    }
    return select;
}

function mark(name, isSelected) {
    const tab = byId(`tab-${name}`);
    tab.setAttribute("aria-selected", String(isSelected));
    tab.tabIndex = isSelected ? 0 : -1;
    byId(name).hidden = !isSelected;
}

function step(names, name, by, select) {
    if (by === undefined)
        return;
    const next = names[(names.indexOf(name) + by + names.length) % names.length];
    select(next);
    byId(`tab-${next}`).focus();
}
