#include "http/staticfiles.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace http {

namespace {

QByteArray typeOf(const QString& name)
{
    static const QHash<QString, QByteArray> types{
        {QStringLiteral("html"), "text/html; charset=utf-8"},
        {QStringLiteral("css"), "text/css; charset=utf-8"},
        {QStringLiteral("js"), "text/javascript; charset=utf-8"},
        {QStringLiteral("mjs"), "text/javascript; charset=utf-8"},
        {QStringLiteral("json"), "application/json"},
        {QStringLiteral("svg"), "image/svg+xml"},
        {QStringLiteral("png"), "image/png"},
        {QStringLiteral("ico"), "image/x-icon"},
        {QStringLiteral("woff2"), "font/woff2"},
        {QStringLiteral("txt"), "text/plain; charset=utf-8"},
    };
    return types.value(QFileInfo(name).suffix(), "application/octet-stream");
}

QByteArray tagOf(const QByteArray& bytes)
{
    return '"' + QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex().left(32) + '"';
}

void addCommonHeaders(Headers& headers, const QByteArray& tag)
{
    headers.set("ETag", tag);
    headers.set("Cache-Control", "no-cache");
    headers.set("Content-Security-Policy",
        "default-src 'self'; img-src 'self' data: blob:; base-uri 'none'; form-action 'self'; "
        "frame-ancestors 'none'");
    headers.set("Referrer-Policy", "no-referrer");
}

bool isKnown(const QByteArray& ifNoneMatch, const QByteArray& tag)
{
    return ifNoneMatch.trimmed() == "*" || ifNoneMatch.contains(tag);
}

} // namespace

StaticFiles::StaticFiles(const QString& folder)
{
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray bytes = file.readAll();
        m_files.insert(
            file.fileName().mid(folder.size() + 1), {bytes, typeOf(file.fileName()), tagOf(bytes)});
    }
}

std::optional<Response> StaticFiles::find(const Request& request) const
{
    QString name = request.segments.join(QLatin1Char('/'));
    if (name.isEmpty() || name.endsWith(QLatin1Char('/')))
        name += QLatin1String("index.html");
    const auto file = m_files.constFind(name);
    if (file == m_files.constEnd() || (request.method != "GET" && request.method != "HEAD"))
        return std::nullopt;
    const bool isUnchanged = isKnown(request.headers.value("If-None-Match"), file->tag);
    Response response = isUnchanged ? Response::empty(304) : Response::bytes(file->bytes, file->type);
    addCommonHeaders(response.headers, file->tag);
    return response;
}

} // namespace http
