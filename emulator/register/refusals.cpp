#include "register/refusals.h"

namespace emulator {

namespace {

// What a host sent may stand in a reason, and a reason on a terminal, which control characters are a command
// to.
QString escaped(const QString& text)
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

} // namespace

void Refusals::add(RefusedRequest refused)
{
    refused.command = escaped(refused.command);
    refused.reason = escaped(refused.reason);
    if (m_all.size() >= mostKept)
        m_all.removeFirst();
    m_all.append(refused);
    if (m_listener)
        m_listener(refused);
}

} // namespace emulator
