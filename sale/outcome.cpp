#include "outcome.h"

namespace sale {

namespace {

struct OutcomeTexts
{
    const char* name;
    const char* text;
};

const OutcomeTexts& texts(Outcome outcome)
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

QString outcomeName(Outcome outcome)
{
    return QString::fromLatin1(texts(outcome).name);
}

QString outcomeText(Outcome outcome)
{
    return QString::fromLatin1(texts(outcome).text);
}

} // namespace sale
