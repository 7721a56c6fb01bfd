#include "finding.h"

#include "showntext.h"

namespace receipt {

namespace {
// No text of a receipt is longer.
constexpr qsizetype longestGiven = 512;

QString textWith(const QString& path, const QString& given, const QString& reason)
{
    QString result = path.isEmpty() ? QString() : path + QStringLiteral(": ");
    if (!given.isEmpty())
        result += QStringLiteral("\"%1\" ").arg(
            given.size() > longestGiven ? given.left(longestGiven) + QStringLiteral("...") : given);
    return shownText(result + reason);
}
} // namespace

QString Finding::text() const
{
    return textWith(path, given, reason);
}

QString Finding::keptText() const
{
    return textWith(path, given, keptReason.isEmpty() ? reason : keptReason);
}

} // namespace receipt
