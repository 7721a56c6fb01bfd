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
    const [one, other] = [light(numbers(getComputedStyle(element).color)), light(ground(element))];
    return (Math.max(one, other) + 0.05) / (Math.min(one, other) + 0.05);
}

const hasText = (element) =>
    [...element.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.data.trim());
const seen = [...document.querySelectorAll("body *")].filter((element) =>
    hasText(element) && element.checkVisibility() && element.getBoundingClientRect().width > 1);
return { seen: seen.length, poor: seen.filter((element) => contrast(element) < 4.5)
    .map((element) => `${element.tagName}.${element.className} "${element.textContent}" ${contrast(element)}`) };
