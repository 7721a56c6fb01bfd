#include "register/terminaltext.h"

namespace emulator {

QString terminalText(const QString& text)
{
    QString result;
    for (const QChar letter : text) {
        if (letter.category() == QChar::Other_Control)
            result += QStringLiteral("\\x%1").arg(letter.unicode(), 2, 16, QLatin1Char('0'));
        else
            result += letter;
    }
    return result;
}

} // namespace emulator
