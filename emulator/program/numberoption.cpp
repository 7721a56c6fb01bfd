#include "program/numberoption.h"

#include <QCommandLineParser>

QString readNumber(const QCommandLineParser& parser, const char* name, int least, int most, int& value)
{
    const QString option = QLatin1String(name);
    if (!parser.isSet(option))
        return {};
    bool isNumber = false;
    const int number = parser.value(option).toInt(&isNumber);
    if (!isNumber || number < least || number > most)
        return QStringLiteral("--%1 must be a number from %2 to %3").arg(option).arg(least).arg(most);
    value = number;
    return {};
}
