#include "finding.h"

#include "showntext.h"

namespace receipt {

namespace {
// No text of a receipt is longer.
constexpr qsizetype longestGiven = 512;
} // namespace

QString Finding::text() const
{
    QString result = path.isEmpty() ? QString() : path + QStringLiteral(": ");
    if (!given.isEmpty())
        result += QStringLiteral("\"%1\" ").arg(
            given.size() > longestGiven ? given.left(longestGiven) + QStringLiteral("...") : given);
    return shownText(result + reason);
}

} // namespace receipt
