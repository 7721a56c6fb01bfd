#include "salemoment.h"

#include "hostprocess.h"
#include "random.h"
#include "registerprocess.h"

#include <QThread>

namespace {

/// Lines that the trace of a sale has, both directions.
struct SaleLines
{
    /// Those about its document come behind these.
    int before;
    int all;
};

constexpr SaleLines hexSale{28, 48};
constexpr SaleLines xmlSale{10, 12};

} // namespace

SaleMoment SaleMoment::draw(Random& random, const QString& protocol)
{
    const SaleLines lines = protocol == QStringLiteral("HEX") ? hexSale : xmlSale;
    const int kind = random.below(100);
    // What is to be kept arises with the document, and what is at stake with its closing.
    if (kind < 35)
        return SaleMoment(std::nullopt);
    return SaleMoment(kind < 80 ? random.between(lines.before, lines.all) : random.between(1, lines.before));
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
    return m_lines ? trace.lines() >= *m_lines : trace.hasClosing();
}
