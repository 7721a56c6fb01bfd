// What a register waits for, with what only the service tells of it: numbers, and what is wrong with the journal.

import { language, t } from "./i18n.js";

// The service's own texts are of its interface, whose callers accept a register by another way than a button. A text that
// is none of these is shown as it came.
const TOLD = {
    needsReview: {
        unknownDocuments: /has documents (?<first>\d+) to (?<last>\d+) of fiscal drive (?<drive>\d+)/,
        oneUnknownDocument: /has document (?<number>\d+) of fiscal drive (?<drive>\d+)/,
        unknownReceipts: /has receipts of fiscal drive (?<drive>\d+)/,
    },
    newDrive: { driveIsNew: /drive is (?<now>\d+), and was (?<before>\d+)/ },
    wrongRegister: {
        otherSerial: /its serial number is (?<now>.+), not (?<meant>.+)$/,
        otherInn: /its tax number is (?<now>.+), not (?<meant>.+)$/,
        otherDrive: /drive is in the register: (?<now>\d+), not (?<meant>\d+)/,
        otherDriveOf: /document (?<id>\S+) was begun on fiscal drive (?<meant>\d+); at the line is (?<now>\d+)/,
        noDriveOf: /document (?<id>\S+) was begun on fiscal drive (?<meant>\d+); the register tells no number/,
    },
    journal: { journalFault: /^(?<fault>.+?)(?:: nothing is sold until the database answers again)?$/ },
};
const WAY = / \(POST \S+\)$/;

// {text, lang}; most of what is not in the page's words is a register's.
export function waitingNote({ waiting, waitingText }) {
    const known = TOLD[waiting];
    if (!known || !waitingText)
        return { text: waitingText ?? "", lang: "ru" };
    const text = waitingText.replace(WAY, "");
    const [key, values] = Object.entries(known).map(([name, form]) => [name, form.exec(text)?.groups])
        .find(([, groups]) => groups) ?? [];
    return key ? { text: t(key, values), lang: language() } : { text, lang: "en" };
}
