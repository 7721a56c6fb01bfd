#include "serviceposting.h"

#include "errors.h"
#include "findingsjson.h"
#include "frctltr.h"
#include "interruption.h"
#include "messages.h"

#include <QJsonArray>

#include <algorithm>
#include <thread>

namespace frctl {

namespace {

using receipt::Finding;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// A service that is started anew is there again by then.
constexpr seconds untilReached(20);
/// A document is begun within 120 s or never, and a register may work on one for a minute.
constexpr seconds untilMade(180);
constexpr seconds longestWait(20);
constexpr milliseconds shortestPause(250);
constexpr milliseconds longestPause(4000);

QList<Finding> findingsOf(const ServiceAnswer& answer, const char* member, Finding::Severity severity)
{
    QList<Finding> findings;
    const QJsonArray told = answer.json.value(QLatin1String(member)).toArray();
    for (const auto& one : told)
        findings.append(sale::findingOf(one.toObject(), severity));
    return findings;
}

} // namespace

ServicePosting::ServicePosting(ServiceClient& client, const Options& options, bool isNewId)
    : m_client(client)
    , m_options(options)
    , m_isNewId(isNewId)
{
}

QJsonObject ServicePosting::post(const QByteArray& body)
{
    m_time.start();
    while (true) {
        const ServiceAnswer answer = attempt(body);
        if (isDecided(answer))
            return answer.json;
        if (remaining() <= milliseconds(0) || (answer.isInVain && !mayBeTaken()))
            break;
        if (answer.status != 202)
            pause();
    }
    if (m_taken.isEmpty())
        giveUp();
    return m_taken;
}

ServiceAnswer ServicePosting::attempt(const QByteArray& body)
{
    try {
        throwIfInterrupted();
        const seconds wait = std::chrono::floor<seconds>(remaining());
        m_last = m_client.post(m_options.answer->id, body, std::clamp(wait, seconds(1), longestWait));
        note(m_last);
        return m_last;
    } catch (const Interrupted&) {
        complain(tr("the service may go on with it; the same again asks: --id %1").arg(m_options.answer->id));
        throw Interrupted(sale::Outcome::Unknown);
    }
}

void ServicePosting::note(const ServiceAnswer& answer)
{
    const bool isTold = answer.isOurs() && answer.json.contains(QStringLiteral("state"));
    // An earlier answer of this run has said that it is new.
    const bool isOfThisRun = !m_taken.isEmpty();
    if (isTold)
        m_taken = answer.json;
    if (isTold && isOfThisRun)
        m_last.json.insert(QStringLiteral("replayed"), false);
    if (!isTold && answer.mayBeStored())
        m_isPerhapsTaken = true;
}

bool ServicePosting::isDecided(const ServiceAnswer& answer) const
{
    if (!answer.isOurs() || answer.asksAgain() || answer.status == 202)
        return false;
    if (!answer.json.contains(QStringLiteral("state")))
        refuse(answer);
    return true;
}

void ServicePosting::refuse(const ServiceAnswer& answer) const
{
    // That of an attempt before may stand all the same.
    if (mayBeTaken())
        giveUp();
    m_options.warnings->add(findingsOf(answer, "warnings", Finding::Warning));
    if (const QList<Finding> errors = findingsOf(answer, "errors", Finding::Error); !errors.isEmpty())
        throw CheckError(QStringLiteral("ReceiptError"), errors);
    if (answer.text("type") == QStringLiteral("archived"))
        throw UsageError(QStringLiteral("--id: ") + answer.fault);
    if (answer.status == 422)
        throw UsageError(QStringLiteral("--id: ")
            + tr("%1 (the first one is of %2)").arg(answer.fault, answer.text("accepted")));
    if (answer.status == 404)
        throw UsageError(QStringLiteral("--port: ") + answer.fault);
    if (answer.status == 401)
        throw HostError(tr("%1 wants a token: --token-file, or FRSERVER_TOKEN").arg(m_client.address()));
    throw HostError(QStringLiteral("%1: %2").arg(m_client.address(), answer.fault));
}

void ServicePosting::giveUp() const
{
    const QString text = QStringLiteral("%1: %2").arg(m_client.address(), m_last.fault);
    // Of an id that it knows a service tells before it says that its queue is full.
    const bool isNowhere = m_isNewId || m_last.status == 429;
    if (!mayBeTaken() && m_last.isOurs() && isNowhere)
        throw HostError(text, sale::ErrorKind::Line);
    sale::AnswerError error{sale::ErrorKind::Line, text, hostErrorName()};
    if (!mayBeTaken() && !m_last.isOurs())
        throwUnreached(error);
    complain(tr("the same again when the service answers tells: --id %1").arg(m_options.answer->id));
    throw ServiceFailure(ExitUnknown, error, sale::Outcome::Unknown);
}

void ServicePosting::throwUnreached(sale::AnswerError error) const
{
    error.action = QStringLiteral("Проверьте адрес сервиса, сеть и сертификат, затем повторите тот же "
                                  "документ с тем же id: дважды он не пробьётся");
    if (m_isNewId)
        throw ServiceFailure(ExitFailure, error, sale::Outcome::None, tr("nothing was sent to the service"));
    // What an earlier run has made of an id is for the service to tell.
    throw ServiceFailure(ExitUnknown, error, sale::Outcome::Unknown,
        tr("nothing was sent to the service now; what an earlier run has made of that id it tells when the "
           "same is asked again: --id %1")
            .arg(m_options.answer->id));
}

void ServicePosting::pause()
{
    if (m_pauses == 0)
        complain(tr("%1: %2; asking again, for %3 s at most")
                     .arg(m_client.address(), m_last.fault)
                     .arg(std::chrono::ceil<seconds>(remaining()).count()));
    milliseconds left = std::min(shortestPause * (1 << std::min(m_pauses, 4)), longestPause);
    ++m_pauses;
    left = std::min(std::max(left, milliseconds(seconds(m_last.retryAfter))), remaining());
    constexpr milliseconds look(50);
    for (; left > milliseconds(0) && !wasInterrupted(); left -= look)
        std::this_thread::sleep_for(std::min(left, look));
}

milliseconds ServicePosting::patience() const
{
    if (m_options.isGiven("wait"))
        return seconds(m_options.waitSeconds);
    return mayBeTaken() ? untilMade : untilReached;
}

milliseconds ServicePosting::remaining() const
{
    return patience() - milliseconds(m_time.elapsed());
}

} // namespace frctl
