#include "documentkind.h"

#include "placeinnames.h"

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
    const std::optional<size_t> place = placeIn(names, name);
    return place ? static_cast<DocumentKind>(*place) : DocumentKind::OtherReceipt;
}

bool isReceiptName(const QString& name)
{
    const DocumentKind kind = documentKindOf(name);
    return isReceipt(kind) && documentKindName(kind) == name;
}

} // namespace sale
