#include "documentarguments.h"

#include "errors.h"
#include "frctltr.h"
#include "money.h"
#include "options.h"
#include "receipterror.h"

#include <QRegularExpression>

#include <optional>

namespace frctl {

qint64 cashArgument(const Options& options)
{
    constexpr double tooMuch = 1e8;
    const QString text = options.arguments.constFirst();
    const auto refuse = [&](const QString& reason) {
        throw UsageError(QStringLiteral("%1: \"%2\" %3").arg(options.command, text, reason));
    };
    // What else stands for a number is more likely a slip: 1e3.
    static const QRegularExpression plain(QStringLiteral("\\A-?[0-9]+([.][0-9]+)?\\z"));
    const double value = text.toDouble();
    if (!plain.match(text).hasMatch())
        refuse(tr("is not a sum as 100.50"));
    if (value <= 0.0)
        refuse(tr("is not above zero; cash-in puts cash into the drawer, cash-out takes it out"));
    if (value >= tooMuch)
        refuse(tr("is more than a register takes"));
    const std::optional<qint64> sum = receipt::fixedPoint(value, 2);
    if (!sum)
        refuse(tr("has parts of a kopeck"));
    return *sum;
}

quint32 documentArgument(const Options& options)
{
    const QString text = options.arguments.constFirst();
    bool ok = false;
    const quint32 number = text.toUInt(&ok);
    if (!ok || number == 0)
        throw UsageError(tr("print-document: \"%1\" is no document number").arg(text));
    return number;
}

void refuseOtherCommand(const Options& options, bool isReturn)
{
    const bool wantsReturn = options.command == QStringLiteral("refund");
    if (isReturn != wantsReturn)
        throw receipt::ReceiptError(QStringLiteral("type"),
            wantsReturn ? tr("is no return; use the command sell")
                        : tr("is a return; use the command refund"));
}

} // namespace frctl
