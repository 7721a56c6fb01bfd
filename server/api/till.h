#pragma once

#include "api/waitingplace.h"
#include "protocol.h"

#include <QJsonObject>
#include <QTimeZone>

namespace frserver {

/// A register as the interface works it.
class Till : public WaitingPlace
{
public:
    /// What the configuration says of it.
    struct Settings
    {
        QString name;
        receipt::Protocol protocol = receipt::Protocol::Xml;
        QTimeZone timeZone = QTimeZone::systemTimeZone();
        /// Seconds in which a document is begun that says nothing of it; 0 for any time.
        int startBefore = 0;
        bool hasCashier = false;
        /// Of pictures of receipts that name none.
        QString cashier = {};
        QString cashierInn = {};
        /// Documents that may wait for it; 0 for as many as whoever is asked says.
        int queueLimit = 0;
    };

    explicit Till(const Settings& settings)
        : m_settings(settings)
    {
    }

    const Settings& settings() const { return m_settings; }
    /// This service works it; otherwise another one does, or did.
    virtual bool isHere() const { return true; }
    /// Of the service that works it.
    virtual int queueLimit() const { return m_settings.queueLimit; }
    /// The service that works it is there, as far as is known.
    virtual bool isReachable() const { return true; }
    /// No service works it, as far as is known, and a person alone can tell of what was begun there.
    virtual bool isLost() const { return false; }
    /// "state", "waiting" (null when it waits for nothing) and what else is known of it.
    virtual QJsonObject view() const = 0;

    /// Asks the register about a document that is unknown, when it can be asked.
    virtual void settle(const QString& id) = 0;
    /// Another service was told to ask, and has not told of it yet.
    virtual bool isAsked(const QString& /*id*/) const { return false; }
    /// @name Give the number of the order that whoever works the register is to follow; 0 when it was
    /// followed
    /// @{
    virtual qint64 pause(const QString& by) = 0;
    virtual qint64 resume(const QString& by) = 0;
    /// @}
    /// What the view tells is of a time behind that order.
    virtual bool hasFollowed(qint64 /*order*/) const { return true; }
    /// A person has looked at what keeps it from selling: another drive, documents that the journal does not
    /// know.
    virtual void accept(const QString& by, const QString& note) = 0;

protected:
    void setSettings(const Settings& settings) { m_settings = settings; }

private:
    Settings m_settings;
};

} // namespace frserver
