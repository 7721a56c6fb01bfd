#include "documentkind.h"

#include <array>

namespace sale {

namespace {

// In the order of the kinds.
constexpr std::array names{
    "sell", "sellReturn", "receipt", "cashIn", "cashOut", "openShift", "closeShift", "report"};

} // namespace

QString documentKindName(DocumentKind kind)
{
    return QString::fromLatin1(names.at(static_cast<size_t>(kind)));
}

DocumentKind documentKindOf(const QString& name)
{
    for (size_t kind = 0; kind < names.size(); ++kind) {
        if (name == QLatin1String(names.at(kind)))
            return static_cast<DocumentKind>(kind);
    }
    return DocumentKind::OtherReceipt;
}

} // namespace sale
