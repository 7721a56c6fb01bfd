#pragma once

#include "peers/toldregister.h"

#include <QDateTime>
#include <QHash>

#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace frserver {

/// A register of the rack, whichever service works it: this one, or another one that has told of it and takes
/// orders for it.
class RackTill : public Till
{
public:
    /// Gives it to the service that works the register, and its number, or 0 when nobody will tell what came
    /// of it. May throw sale::JournalError.
    using Order = std::function<qint64(const RackTill& till, const QJsonObject& content)>;

    /// Has what other services were asked before followed before this one pauses or resumes the register.
    using FollowOthers = std::function<void()>;

    /// The register as this service has it must outlive it; null when it does not have it.
    /// A service that has told nothing for longer than that is taken for dead.
    RackTill(const Settings& settings, Till* own, const Order& order, const FollowOthers& followOthers,
        std::chrono::seconds longestSilence);

    /// How this service is called when it works the register.
    void setServiceName(const QString& name) { m_serviceName = name; }
    void tell(const ToldRegister& told);
    /// The service that has told of it was there so many seconds ago; nothing when it is gone.
    void noteSilence(std::optional<double> seconds);
    /// Whether it is another one that works it, or whether that one can be reached, has changed since this
    /// was asked last. What else there is to show of it was told.
    bool takeReachability();
    /// Its id.
    const QString& service() const { return m_told.service; }
    /// This service works it, and tells of it.
    bool isOwn() const { return m_own != nullptr && m_own->isHere(); }
    /// What another service has ordered.
    void obey(const QJsonObject& content);
    /// An acceptance is of what a person has seen, and not of what else keeps the register by now, or keeps
    /// it at the hands of the next owner.
    bool mayObey(const QJsonObject& content) const;
    /// A pause of that number was followed, by whichever service.
    void noteFollowed(qint64 order);
    /// The last ones.
    const QJsonArray& followed() const { return m_followed; }
    /// The register was asked about the document as those orders said, or nobody will do so.
    void noteAnswer(const QString& id, const QJsonArray& orders);

    bool isHere() const override;
    int queueLimit() const override;
    bool isReachable() const override;
    bool isLost() const override { return !isOwn() && silence() > m_longestSilence; }
    QJsonObject view() const override;
    void wake() override;
    void setAwaited(const QString& id, bool isAwaited) override;
    void settle(const QString& id) override;
    bool isAsked(const QString& id) const override { return !isHere() && m_asked.contains(id); }
    qint64 pause(const QString& by) override;
    bool hasFollowed(qint64 order) const override { return order == 0 || m_followed.contains(order); }
    qint64 resume(const QString& by) override;
    void accept(const QString& by, const QString& note) override;

private:
    qint64 order(const QJsonObject& content);
    double silence() const;
    double age() const;
    QJsonObject toldView() const;
    QJsonObject obstacle() const;

    Till* const m_own;
    const Order m_order;
    const FollowOthers m_followOthers;
    const double m_longestSilence;
    QString m_serviceName;
    ToldRegister m_told;
    QJsonArray m_followed;
    /// Documents that another service is to ask about, with the order's number.
    QHash<QString, qint64> m_asked;
    /// Seconds, when it was noted last.
    double m_silence = 0;
    QElapsedTimer m_noted;
    /// When it was there last.
    QDateTime m_seen;
    /// When it was asked last.
    std::optional<std::pair<bool, bool>> m_reachability;
};

/// @name What is ordered
/// @{
namespace rackorder {

/// "pause", "resume" and so on.
QString verbOf(const QJsonObject& content);
bool isPause(const QJsonObject& content);
/// Whoever does not work the register would keep it in mind for the day when it does.
bool isForOwner(const QJsonObject& content);
/// Only said, since it is worth nothing later.
bool isPassing(const QJsonObject& content);
/// The document that is to be asked about; empty for another order.
QString settledId(const QJsonObject& content);

} // namespace rackorder
/// @}

} // namespace frserver
