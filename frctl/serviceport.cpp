#include "serviceport.h"

#include <QHostAddress>
#include <QRegularExpression>

#include <algorithm>

namespace frctl {

namespace {

const QString portPrefix = QStringLiteral("service:");
constexpr int usualPort = 8403;

bool isThisMachine(const QString& host)
{
    return host == QStringLiteral("localhost") || QHostAddress(host).isLoopback();
}

QUrl addressOf(const QString& text)
{
    QUrl url(text, QUrl::StrictMode);
    // Elsewhere a service speaks TLS and nothing else.
    if (url.scheme().isEmpty())
        url.setScheme(isThisMachine(url.host()) ? QStringLiteral("http") : QStringLiteral("https"));
    // The usual port of the web is meant by a whole address alone.
    if (url.port() < 0 && text.startsWith(QLatin1String("//")))
        url.setPort(usualPort);
    return url;
}

/// One that leads elsewhere on its way would name another place than it shows.
bool isPlainPath(const QString& path)
{
    const QStringList parts = path.mid(1).split(QLatin1Char('/'));
    return path.isEmpty() || std::none_of(parts.cbegin(), parts.cend(), [](const QString& part) {
        return part.isEmpty() || part == QStringLiteral(".") || part == QStringLiteral("..");
    });
}

bool isAddress(const QUrl& url)
{
    const bool isHttp = url.scheme() == QStringLiteral("http") || url.scheme() == QStringLiteral("https");
    return url.isValid() && isHttp && !url.host().isEmpty() && url.userInfo().isEmpty() && !url.hasQuery()
        && !url.hasFragment() && isPlainPath(url.path(QUrl::FullyDecoded));
}

} // namespace

bool isServiceName(const QString& port)
{
    return port.startsWith(portPrefix);
}

std::optional<ServicePort> servicePortOf(const QString& port)
{
    static const QRegularExpression plainName(QStringLiteral("\\A[A-Za-z0-9][A-Za-z0-9._-]{0,63}\\z"));
    if (!isServiceName(port))
        return std::nullopt;
    const QString text = port.mid(portPrefix.size());
    const qsizetype end = text.lastIndexOf(QLatin1Char('/'));
    const QString name = text.mid(end + 1);
    const QUrl service = addressOf(end < 0 ? QStringLiteral("//127.0.0.1") : text.left(end));
    if (!plainName.match(name).hasMatch() || !isAddress(service))
        return std::nullopt;
    return ServicePort{service, name};
}

} // namespace frctl
