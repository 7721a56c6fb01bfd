// Gives the texts of the page that have too little contrast with their ground, as people see them.
const channel = (value) => (value <= 0.03928 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4);
const numbers = (colour) => colour.match(/[\d.]+/g).map(Number);
const light = ([red, green, blue]) =>
    0.2126 * channel(red / 255) + 0.7152 * channel(green / 255) + 0.0722 * channel(blue / 255);

function ground(element) {
    for (let at = element; at; at = at.parentElement) {
        const colour = numbers(getComputedStyle(at).backgroundColor);
        if (colour[3] !== 0)
            return colour;
    }
    return [255, 255, 255];
}

function contrast(element) {
    return between(light(numbers(getComputedStyle(element).color)), light(ground(element)));
}

// Whatever state is shown: each colour of text on each ground that it may stand on.
const named = (name) => {
    const probe = document.createElement("i");
    probe.style.color = `var(--${name})`;
    document.body.append(probe);
    const colour = numbers(getComputedStyle(probe).color);
    probe.remove();
    return light(colour);
};
const between = (one, other) => (Math.max(one, other) + 0.05) / (Math.min(one, other) + 0.05);
const pairs = [["on-accent", "accent"], ["on-paper", "paper"], ["text", "desk"], ["text", "ground"], ["muted", "ground"],
    ...["card", "shade"].flatMap((under) => ["text", "muted", "accent", "good", "warn", "bad"].map((ink) => [ink, under]))];
// The edge of a field or a button tells where it is.
const edges = [["edge", "card"], ["accent", "card"], ["accent", "ground"]];
const poorPairs = [...pairs.map((pair) => [...pair, 4.5]), ...edges.map((pair) => [...pair, 3])]
    .filter(([ink, under, least]) => between(named(ink), named(under)) < least).map((pair) => pair.join(" "));

const hasText = (element) =>
    [...element.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.data.trim());
const seen = [...document.querySelectorAll("body *")].filter((element) =>
    hasText(element) && element.checkVisibility() && element.getBoundingClientRect().width > 1);
return { seen: seen.length, poorPairs, poor: seen.filter((element) => contrast(element) < 4.5)
    .map((element) => `${element.tagName}.${element.className} "${element.textContent}" ${contrast(element)}`) };
