#include "serviceclient.h"

#include "frctltr.h"
#include "interruption.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QScopedPointer>
#include <QSslError>
#include <QStringList>
#include <QTimer>

namespace frctl {

namespace {

using std::chrono::seconds;

/// Of a service that answers at once.
constexpr seconds answerTime(15);
constexpr int lookMs = 50;

int milliseconds(seconds time)
{
    return static_cast<int>(std::chrono::milliseconds(time).count());
}

/// Without exceptions out of an event loop.
void waitFor(const QNetworkReply& reply)
{
    QEventLoop loop;
    QTimer look;
    QObject::connect(&reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QObject::connect(&look, &QTimer::timeout, &loop, [&loop] {
        if (wasInterrupted())
            loop.quit();
    });
    look.start(lookMs);
    if (!reply.isFinished())
        loop.exec();
}

/// What a question met on its way.
struct Passage
{
    bool isSent = false;
    bool isEncrypted = false;
    /// Of the other side's certificate.
    QStringList doubts = {};
};

void watch(const QNetworkReply& reply, Passage& passage)
{
    QObject::connect(&reply, &QNetworkReply::requestSent, &reply, [&passage] { passage.isSent = true; });
    QObject::connect(&reply, &QNetworkReply::encrypted, &reply, [&passage] { passage.isEncrypted = true; });
    QObject::connect(&reply, &QNetworkReply::sslErrors, &reply, [&passage](const QList<QSslError>& errors) {
        for (const QSslError& error : errors)
            passage.doubts.append(error.errorString());
        passage.doubts.removeDuplicates();
    });
}

bool isUnreached(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::ConnectionRefusedError || error == QNetworkReply::HostNotFoundError;
}

/// A connection tells of its encryption to its first question alone.
bool isWithoutTls(const QNetworkReply& reply, const Passage& passage)
{
    return reply.url().scheme() == QStringLiteral("https") && reply.error() != QNetworkReply::NoError
        && !passage.isEncrypted && !passage.isSent;
}

/// A connection that breaks is made anew by itself, and how that one ends tells nothing of what went over the
/// first.
bool isUnsent(const QNetworkReply& reply, const Passage& passage)
{
    return !passage.isSent && (isUnreached(reply.error()) || isWithoutTls(reply, passage));
}

/// Of what nobody has answered.
QString faultOf(const QNetworkReply& reply, const Passage& passage)
{
    const QNetworkReply::NetworkError error = reply.error();
    if (error == QNetworkReply::OperationCanceledError)
        return tr("no answer");
    if (error == QNetworkReply::SslHandshakeFailedError && !passage.doubts.isEmpty())
        return tr("its certificate is not trusted: %1").arg(passage.doubts.join(QStringLiteral("; ")));
    if (isWithoutTls(reply, passage) && !isUnreached(error))
        return tr("no TLS came about with it: %1").arg(reply.errorString());
    return reply.errorString();
}

/// Anybody may answer with JSON; a service tells of a document, of a register or, by its type, of a problem.
QJsonObject wordsOf(const QJsonObject& json)
{
    const bool isDocument = json.contains(QStringLiteral("id")) && json.contains(QStringLiteral("state"));
    const bool isRegister = json.contains(QStringLiteral("queue"));
    const bool isProblem = json.contains(QStringLiteral("title")) && json.contains(QStringLiteral("type"));
    return isDocument || isRegister || isProblem ? json : QJsonObject();
}

} // namespace

ServiceClient::ServiceClient(const ServicePort& port, const QByteArray& token)
    : m_port(port)
    , m_token(token)
{
    m_network.setProxy(QNetworkProxy::NoProxy);
}

QNetworkRequest ServiceClient::request(const QString& path) const
{
    QUrl url = m_port.service;
    url.setPath(url.path() + QStringLiteral("/v1/registers/") + m_port.registerName + path);
    QNetworkRequest request(url);
    // The token is for this address alone.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // HTTP/2 does not say when a question was sent.
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setTransferTimeout(milliseconds(answerTime));
    if (!m_token.isEmpty())
        // untranslated: of HTTP
        request.setRawHeader("Authorization", "Bearer " + m_token);
    return request;
}

ServiceAnswer ServiceClient::askRegister()
{
    return answerTo(m_network.get(request({})));
}

ServiceAnswer ServiceClient::post(const QString& id, const QByteArray& body, seconds wait)
{
    QNetworkRequest request = this->request(QStringLiteral("/documents"));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray("application/json"));
    request.setRawHeader("Idempotency-Key", id.toUtf8());
    request.setRawHeader("Prefer", "wait=" + QByteArray::number(qint64{wait.count()}));
    request.setTransferTimeout(milliseconds(wait + answerTime));
    return answerTo(m_network.post(request, body));
}

ServiceAnswer ServiceClient::answerTo(QNetworkReply* sent)
{
    Passage passage;
    const QScopedPointer<QNetworkReply> reply(sent);
    watch(*reply, passage);
    waitFor(*reply);
    throwIfInterrupted();
    ServiceAnswer answer;
    answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    answer.retryAfter = reply->rawHeader("Retry-After").toInt();
    answer.isUnsent = isUnsent(*reply, passage);
    answer.isInVain = reply->error() == QNetworkReply::SslHandshakeFailedError;
    answer.json = wordsOf(QJsonDocument::fromJson(reply->readAll()).object());
    if (answer.status == 0)
        answer.fault = faultOf(*reply, passage);
    else if (!answer.isOurs())
        answer.fault = tr("answers %1, which is not the answer of a service").arg(answer.status);
    else
        answer.fault = answer.text("detail").isEmpty() ? answer.text("title") : answer.text("detail");
    return answer;
}

} // namespace frctl
