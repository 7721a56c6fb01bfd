#include "serviceclient.h"

#include "frctltr.h"
#include "interruption.h"

#include <QEventLoop>
#include <QJsonDocument>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QScopedPointer>
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

bool isUnsent(QNetworkReply::NetworkError error)
{
    return error == QNetworkReply::ConnectionRefusedError || error == QNetworkReply::HostNotFoundError
        || error == QNetworkReply::SslHandshakeFailedError;
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
    const QScopedPointer<QNetworkReply> reply(sent);
    waitFor(*reply);
    throwIfInterrupted();
    ServiceAnswer answer;
    answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    answer.retryAfter = reply->rawHeader("Retry-After").toInt();
    answer.isUnsent = isUnsent(reply->error());
    answer.json = wordsOf(QJsonDocument::fromJson(reply->readAll()).object());
    if (answer.status == 0)
        answer.fault = reply->error() == QNetworkReply::OperationCanceledError ? tr("no answer")
                                                                               : reply->errorString();
    else if (!answer.isOurs())
        answer.fault = tr("answers %1, which is not the answer of a service").arg(answer.status);
    else
        answer.fault = answer.text("detail").isEmpty() ? answer.text("title") : answer.text("detail");
    return answer;
}

} // namespace frctl
