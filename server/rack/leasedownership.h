#pragma once

#include "rack/ownership.h"

#include "postgres/registerleases.h"

namespace frserver {

/// By leases in the database that the services share.
class LeasedOwnership : public Ownership
{
public:
    using Clock = sale::RegisterLeases::Clock;

    /// Throws sale::JournalError.
    LeasedOwnership(const sale::PostgresPlace& place, const QList<sale::RegisterLeases::Wish>& registers,
        std::chrono::milliseconds term, const Clock& clock = sale::RegisterLeases::timeSinceBoot);

    void look() override;
    bool isHeld(const QString& registerName) const override;
    QJsonObject lease(const QString& registerName) const override;
    QJsonObject owner(const QString& registerName) const override;
    std::optional<Waiting> obstacle(const QString& registerName) const override;
    bool giveWay(const QString& registerName) override;
    bool leaveDrive(const QString& registerName) override;
    void release(const QString& registerName) override;
    void acceptMoved(const QString& registerName) override;

private:
    using Wish = sale::RegisterLeases::Wish;
    using Standing = sale::RegisterLeases::Standing;

    void renew();
    void seek();
    void take(Wish& wish);
    QList<Wish> unheld() const;

    const std::chrono::milliseconds m_term;
    const Clock m_clock;
    sale::RegisterLeases m_leases;
    QHash<QString, Wish> m_wishes;
    QHash<QString, Standing> m_standings;
    /// Lost a moment ago: whoever works them is to see that before they are taken again.
    QStringList m_lost;
    /// Of the database.
    QString m_fault;
    std::chrono::milliseconds m_renewAt{0};
    std::chrono::milliseconds m_tidyAt{0};
};

} // namespace frserver
