#include "register/drivenumber.h"

#include <QRandomGenerator>
#include <QRegularExpression>

namespace emulator::drivenumber {

bool isGood(const QString& number)
{
    static const QRegularExpression form(QStringLiteral("\\A9999[0-9]{12}\\z"));
    return form.match(number).hasMatch();
}

QString fresh()
{
    // Some above them are left for registers that count on.
    constexpr quint64 numbers = 999'999'000'000;
    const quint64 number = QRandomGenerator::system()->generate64() % numbers;
    return QStringLiteral("9999") + QStringLiteral("%1").arg(number, 12, 10, QLatin1Char('0'));
}

std::optional<QString> countedOn(const QString& number, int by)
{
    static const QRegularExpression form(QStringLiteral("\\A(.*?)([0-9]{1,18})( *)\\z"));
    const QRegularExpressionMatch match = form.match(number);
    const QString digits = match.captured(2);
    const QString next
        = QString::number(digits.toLongLong() + by).rightJustified(digits.size(), QLatin1Char('0'));
    if (!match.hasMatch() || next.size() > digits.size())
        return std::nullopt;
    return match.captured(1) + next + match.captured(3);
}

} // namespace emulator::drivenumber
