#pragma once

#include "answererror.h"
#include "options.h"
#include "serviceclient.h"

#include <QElapsedTimer>

namespace frctl {

/// One document on its way through a service: posted under its id, and again under the same one, until the
/// service says what has become of it or the patience of --wait is over.
class ServicePosting
{
public:
    /// The id is that of the options' answer. Of a new one no earlier run has made anything.
    ServicePosting(ServiceClient& client, const Options& options, bool isNewId);

    /// The document as the service tells it last: at its end, or still waiting when nobody waits for it any
    /// longer. Throws UsageError, CheckError and HostError for what the service has not taken, ServiceFailure
    /// where nobody knows whether it has, and Interrupted.
    QJsonObject post(const QByteArray& body);

private:
    ServiceAnswer attempt(const QByteArray& body);
    void note(const ServiceAnswer& answer);
    /// What was answered ends the posting; throws where it refuses it.
    bool isDecided(const ServiceAnswer& answer) const;
    [[noreturn]] void refuse(const ServiceAnswer& answer) const;
    [[noreturn]] void giveUp() const;
    [[noreturn]] void throwUnreached(sale::AnswerError error) const;
    void pause();
    /// The service has told so, or its answer was lost.
    bool mayBeTaken() const { return m_isPerhapsTaken || !m_taken.isEmpty(); }
    std::chrono::milliseconds patience() const;
    std::chrono::milliseconds remaining() const;

    ServiceClient& m_client;
    const Options& m_options;
    const bool m_isNewId;
    QElapsedTimer m_time;
    ServiceAnswer m_last;
    /// What the service has taken, as it told it.
    QJsonObject m_taken;
    /// An answer was lost that may have said so.
    bool m_isPerhapsTaken = false;
    int m_pauses = 0;
};

} // namespace frctl
