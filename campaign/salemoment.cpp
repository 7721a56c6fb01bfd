#include "salemoment.h"

#include "hostprocess.h"
#include "random.h"
#include "registerprocess.h"

#include <QThread>

SaleMoment SaleMoment::draw(Random& random, const QString& protocol)
{
    // Both directions. Over XML the document is a single request.
    constexpr int documentLines = 16;
    constexpr int xmlLines = 14;
    constexpr int hexLines = 54;
    const bool isHex = protocol == QStringLiteral("HEX");
    const int kind = random.below(100);
    // What is to be kept arises with the document, and what is at stake with its closing.
    if (kind < 35)
        return {Closing, 1};
    if (kind < 80 && isHex)
        return {Document, random.between(1, documentLines)};
    return {Anywhere, random.between(1, isHex ? hexLines : xmlLines)};
}

void SaleMoment::wait(HostProcess& host, RegisterProcess& device, Random& random) const
{
    constexpr int pause = 200;
    // The longer one reaches behind the answer.
    constexpr int longPermille = 300;
    const int longestPause = random.chance(longPermille) ? 30'000 : 3000;
    for (device.listen(); !hasCome(device.trace()) && !host.hasEnded(); device.listen())
        QThread::usleep(pause);
    QThread::usleep(static_cast<unsigned long>(random.below(longestPause)));
}

bool SaleMoment::hasCome(const WireTrace& trace) const
{
    if (m_part == Closing)
        return trace.hasClosing();
    return (m_part == Document ? trace.documentLines() : trace.lines()) >= m_lines;
}
