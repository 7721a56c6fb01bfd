#include "outcome.h"

namespace frctl {

namespace {

struct OutcomeTexts
{
    const char* name;
    const char* text;
};

const OutcomeTexts& texts(DocumentOutcome outcome)
{
    static const OutcomeTexts table[] = {
        {"", ""},
        {"cancelled", "the document was cancelled"},
        {"notCancelled", "the document could not be cancelled; the register's next start cleans it up"},
        {"unknown",
            "the document was being closed: it may have been issued, look at the register before you repeat it"},
        {"unknown", "the document may have been issued: look at the register before you repeat it"},
        {"issued", "the document was issued; do not repeat it"},
        {"notIssued", "the document was not issued; it may be repeated"},
    };
    return table[static_cast<int>(outcome)];
}

} // namespace

DocumentVerdict verdictOf(const DriveMark& before, const DriveMark& after)
{
    // A drive in use has at least the document of its registration; a driver reads an answer that it does not
    // understand as zero.
    if (before.lastDocument == 0 || after.lastDocument == 0 || before.drive != after.drive)
        return DocumentOutcome::Unknown;
    if (after.lastDocument == before.lastDocument)
        return DocumentOutcome::NotIssued;
    if (after.lastDocument == before.lastDocument + 1)
        return {DocumentOutcome::Issued, after.lastDocument};
    return DocumentOutcome::Unknown;
}

QString outcomeName(DocumentOutcome outcome)
{
    return QString::fromLatin1(texts(outcome).name);
}

QString outcomeText(const DocumentVerdict& verdict)
{
    const QString text = QString::fromLatin1(texts(verdict.outcome).text);
    return verdict.number == 0 ? text : QStringLiteral("document %1: ").arg(verdict.number) + text;
}

QJsonObject documentJson(const DocumentVerdict& verdict)
{
    QJsonObject json;
    if (verdict.outcome != DocumentOutcome::None)
        json.insert(QStringLiteral("outcome"), outcomeName(verdict.outcome));
    if (verdict.number != 0)
        json.insert(QStringLiteral("documentNumber"), static_cast<qint64>(verdict.number));
    return json;
}

} // namespace frctl
