#include "rack/leasedownership.h"

#include "rack/racklog.h"

#include "journalerror.h"

#include <QSysInfo>

#include <unistd.h>

namespace frserver {

using std::chrono::milliseconds;

namespace {

/// Taking hundreds of registers must not keep those that are held from being renewed.
constexpr milliseconds longestSeek{500};
constexpr milliseconds pause{1'000};
constexpr milliseconds tidyPause{60'000};

QJsonObject ownerJson(const QString& host, qint64 process)
{
    return {{QStringLiteral("host"), host}, {QStringLiteral("process"), process}};
}

} // namespace

LeasedOwnership::LeasedOwnership(
    const sale::PostgresPlace& place, const QList<Wish>& registers, milliseconds term, const Clock& clock)
    : m_term(term)
    , m_clock(clock)
    , m_leases(place, term, clock)
{
    for (const Wish& wish : registers)
        m_wishes.insert(wish.registerName, wish);
}

void LeasedOwnership::look()
{
    try {
        if (m_clock() >= m_renewAt)
            renew();
        // What could not be renewed in time is not taken anew before that was tried: a worker is at it.
        else if (!m_fault.isEmpty())
            return;
        seek();
        if (m_clock() >= m_tidyAt) {
            m_leases.want(m_wishes.keys());
            m_leases.tidy();
            m_tidyAt = m_clock() + tidyPause;
        }
        m_fault.clear();
    } catch (const sale::JournalError& error) {
        if (m_fault.isEmpty())
            qCWarning(rackLog).noquote() << "leases:" << error.what();
        m_fault = QString::fromUtf8(error.what());
        m_renewAt = m_clock() + pause;
    }
}

void LeasedOwnership::renew()
{
    const milliseconds asked = m_clock();
    m_lost = m_leases.renew();
    // Their workers are killed now, and another machine may be waiting to hear that.
    if (!m_lost.isEmpty())
        m_tidyAt = asked + pause;
    m_renewAt = asked + m_term / 3;
}

QList<LeasedOwnership::Wish> LeasedOwnership::unheld() const
{
    QList<Wish> wishes;
    for (const Wish& wish : m_wishes) {
        if (!m_leases.isHeld(wish.registerName) && !m_lost.contains(wish.registerName))
            wishes.append(wish);
    }
    return wishes;
}

void LeasedOwnership::seek()
{
    const milliseconds begun = m_clock();
    const QList<Wish> wishes = unheld();
    m_lost.clear();
    m_standings = m_leases.standings(wishes);
    for (const Wish& wish : wishes) {
        if (m_standings.value(wish.registerName).kind == Standing::Free && m_clock() < begun + longestSeek)
            take(m_wishes[wish.registerName]);
    }
}

void LeasedOwnership::take(Wish& wish)
{
    if (!m_leases.take(wish))
        return;
    if (wish.isMovedHere)
        qCInfo(rackLog).noquote() << wish.registerName << "was moved here";
    wish.isMovedHere = false;
}

bool LeasedOwnership::isHeld(const QString& registerName) const
{
    return m_leases.isHeld(registerName);
}

QJsonObject LeasedOwnership::lease(const QString& registerName) const
{
    QJsonObject lease = m_leases.lease(registerName).toJson();
    lease.insert(QStringLiteral("until"), qint64{m_leases.heldUntil(registerName).count()});
    return lease;
}

QJsonObject LeasedOwnership::owner(const QString& registerName) const
{
    if (isHeld(registerName))
        return ownerJson(QSysInfo::machineHostName(), ::getpid());
    const Standing standing = m_standings.value(registerName);
    return standing.process == 0 ? QJsonObject() : ownerJson(standing.host, standing.process);
}

std::optional<Waiting> LeasedOwnership::obstacle(const QString& registerName) const
{
    if (!m_fault.isEmpty())
        return Waiting{QStringLiteral("journal"), m_fault};
    const Standing standing = m_standings.value(registerName);
    if (standing.kind != Standing::OtherMachine)
        return std::nullopt;
    return Waiting{QStringLiteral("otherMachine"),
        QStringLiteral("the register was worked from %1 last: somebody has to say that it was moved here")
            .arg(standing.host)};
}

bool LeasedOwnership::giveWay(const QString& registerName)
{
    // No other machine would take that one without a person's word.
    if (m_wishes.value(registerName).isBound)
        return false;
    try {
        return m_leases.giveWay(registerName);
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << registerName << error.what();
        return false;
    }
}

bool LeasedOwnership::leaveDrive(const QString& registerName)
{
    try {
        m_leases.leaveDrive(registerName);
        return true;
    } catch (const sale::JournalError& error) {
        qCWarning(rackLog).noquote() << registerName << error.what();
        return false;
    }
}

void LeasedOwnership::release(const QString& registerName)
{
    m_wishes.remove(registerName);
    try {
        m_leases.release(registerName);
    } catch (const sale::JournalError& error) {
        // It ends by itself.
        qCWarning(rackLog).noquote() << registerName << error.what();
    }
}

void LeasedOwnership::acceptMoved(const QString& registerName)
{
    const auto wish = m_wishes.find(registerName);
    if (wish == m_wishes.end())
        return;
    wish->isMovedHere = true;
    look();
    // Once: where it is at work still, that wants another word.
    wish->isMovedHere = false;
}

} // namespace frserver
