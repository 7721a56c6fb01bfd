#include "outcome.h"

#include "saletr.h"

#include <algorithm>
#include <iterator>

namespace sale {

namespace {

struct OutcomeTexts
{
    Outcome outcome;
    const char* name;
    const char* text;
};

const OutcomeTexts& texts(Outcome outcome)
{
    static const OutcomeTexts table[] = {
        {Outcome::None, "", ""},
        {Outcome::Cancelled, "cancelled", QT_TR_NOOP("the document was cancelled")},
        {Outcome::NotCancelled, "notCancelled",
            QT_TR_NOOP("the document could not be cancelled; the register's next start cleans it up")},
        {Outcome::Unasked, "unknown",
            QT_TR_NOOP(
                "the document was being closed: it may have been issued, look at the register before you repeat it")},
        {Outcome::Unknown, "unknown",
            QT_TR_NOOP("the document may have been issued: look at the register before you repeat it")},
        {Outcome::Issued, "issued", QT_TR_NOOP("the document was issued; do not repeat it")},
        {Outcome::NotIssued, "notIssued", QT_TR_NOOP("the document was not issued; it may be repeated")},
    };
    const auto* const found = std::find_if(std::begin(table), std::end(table),
        [outcome](const OutcomeTexts& row) { return row.outcome == outcome; });
    return found == std::end(table) ? table[0] : *found;
}

} // namespace

QString outcomeName(Outcome outcome)
{
    return QString::fromLatin1(texts(outcome).name);
}

QString outcomeText(Outcome outcome)
{
    const char* const text = texts(outcome).text;
    return *text == 0 ? QString() : tr(text);
}

} // namespace sale
