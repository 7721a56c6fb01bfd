#include "finding.h"

#include "showntext.h"

namespace receipt {

namespace {
// No text of a receipt is longer.
constexpr qsizetype longestShown = 512;
} // namespace

QString Finding::text() const
{
    QString result = path.isEmpty() ? QString() : path + QStringLiteral(": ");
    if (!given.isEmpty())
        result += QStringLiteral("\"%1\" ").arg(
            given.size() > longestShown ? given.left(longestShown) + QStringLiteral("...") : given);
    return shownText(result + reason);
}

} // namespace receipt
