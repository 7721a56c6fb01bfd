#include "showntext.h"

namespace receipt {

namespace {

QString shown(QChar control)
{
    if (control == QChar(0x1D))
        return QStringLiteral("<GS>");
    return QStringLiteral("<%1>").arg(control.unicode(), 2, 16, QLatin1Char('0')).toUpper();
}

} // namespace

QString shownText(const QString& text)
{
    QString result;
    for (const QChar character : text) {
        // The controls of ISO 8859 too: a terminal may take them for the start of a sequence.
        const bool isControl = character.category() == QChar::Other_Control;
        result += isControl ? shown(character) : QString(character);
    }
    return result;
}

} // namespace receipt
