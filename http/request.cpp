#include "http/request.h"

#include "http/problem.h"

#include <QJsonDocument>
#include <QJsonParseError>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QUrlQuery>

#include <algorithm>

namespace http {

namespace {

/// Clients behind a proxy may send "http://host/path".
QByteArray withoutOrigin(const QByteArray& target)
{
    static const QRegularExpression origin(
        QStringLiteral("^https?://[^/?]*"), QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = origin.match(QString::fromLatin1(target));
    const QByteArray rest = target.mid(match.capturedLength());
    return match.hasMatch() && !rest.startsWith('/') ? '/' + rest : rest;
}

QString decodedSegment(const QByteArray& segment)
{
    static const QRegularExpression broken(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(QByteArray::fromPercentEncoding(segment));
    if (decoder.hasError() || text.contains(QChar::Null)
        || broken.match(QString::fromLatin1(segment)).hasMatch())
        throw Problem(400, QStringLiteral("The path is not percent-encoded UTF-8."));
    return text;
}

QList<std::pair<QString, QString>> decodedQuery(QByteArray text)
{
    QList<std::pair<QString, QString>> values;
    const QUrlQuery query(QString::fromUtf8(text.replace('+', "%20")));
    for (const auto& [name, value] : query.queryItems(QUrl::FullyDecoded))
        values.append({name, value});
    return values;
}

} // namespace

Request Request::of(const QByteArray& method, const QByteArray& target)
{
    const QByteArray local = withoutOrigin(target);
    if (!local.startsWith('/'))
        throw Problem(400, QStringLiteral("The target of a request begins with a slash."));
    const qsizetype mark = local.indexOf('?');
    Request request;
    request.method = method;
    request.path = mark < 0 ? local : local.left(mark);
    if (mark >= 0)
        request.query = decodedQuery(local.mid(mark + 1));
    if (request.path == "/")
        return request;
    for (const QByteArray& segment : request.path.mid(1).split('/'))
        request.segments.append(decodedSegment(segment));
    return request;
}

std::optional<QString> Request::queryValue(const QString& name) const
{
    for (const auto& [key, value] : query) {
        if (key == name)
            return value;
    }
    return std::nullopt;
}

std::optional<int> Request::queryNumber(const QString& name, int least, int most) const
{
    const std::optional<QString> text = queryValue(name);
    if (!text)
        return std::nullopt;
    bool isNumber = false;
    const int number = text->toInt(&isNumber);
    if (!isNumber || number < least || number > most)
        throw Problem(400, QStringLiteral("%1 is a number from %2 to %3.").arg(name).arg(least).arg(most));
    return number;
}

QJsonObject Request::json() const
{
    QJsonParseError error;
    const QByteArray text = body.startsWith("\xEF\xBB\xBF") ? body.mid(3) : body;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        throw Problem(400,
            QStringLiteral("The body is not JSON: %1 at byte %2.")
                .arg(error.errorString())
                .arg(error.offset));
    if (!document.isObject())
        throw Problem(400, QStringLiteral("The body is not a JSON object."));
    return document.object();
}

std::optional<std::chrono::seconds> Request::preferredWait() const
{
    static const QRegularExpression wait(
        QStringLiteral("(?:^|[,;])\\s*wait\\s*=\\s*\"?(\\d+)\"?\\s*(?:$|[,;])"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = wait.match(QString::fromLatin1(headers.value("Prefer")));
    if (!match.hasMatch())
        return std::nullopt;
    // Days, which a timer still takes.
    constexpr int most = 999'999;
    bool isNumber = false;
    const int seconds = match.captured(1).toInt(&isNumber);
    return std::chrono::seconds(isNumber ? std::min(seconds, most) : most);
}

} // namespace http
