#include "errorcatalogue.h"

#include "errortexts.h"

namespace spf::utils {

namespace {

// The numbered key stands also for a number without a text: the host may have a translation for it.
tr::Tr catalogueText(const QString& keyPattern, int number, const QMap<int, QString>& texts)
{
    return {keyPattern.arg(number), texts.value(number)};
}

constexpr int printerCategory = 3;

} // namespace

tr::TrList getErrorMessage(int category, int code, const QString& description)
{
    tr::Tr message;
    if (category == printerCategory)
        message = getPrinterError(code);
    if (message.isEmpty())
        message = getErrorStr(code, description);
    return {getErrorCategoryStr(category), message};
}

tr::Tr getPrinterError(int code)
{
    return catalogueText(QStringLiteral("spfPrinterError%1"), code, printerErrorTexts());
}

tr::Tr getErrorStr(int code, const QString& description)
{
    QString text = errorTexts().value(code);
    if (text.isEmpty())
        text = description.isEmpty() ? QStringLiteral("Неизвестная ошибка") : description;
    return {QStringLiteral("spfErrorMessage%1").arg(code), text};
}

tr::Tr getErrorCategoryStr(int category)
{
    return catalogueText(QStringLiteral("spfErrorCategory%1"), category, errorCategoryTexts());
}

} // namespace spf::utils
