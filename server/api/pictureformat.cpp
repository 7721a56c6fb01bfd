#include "api/pictureformat.h"

#include "http/problem.h"

namespace frserver {

namespace {

const QByteArray svgType = "image/svg+xml";
const QByteArray pngType = "image/png";

/// How much a client likes the type, by the entry that says most of it; 0 for not at all.
double likingOf(const QByteArray& type, const QByteArray& accept)
{
    const QByteArrayList sorts{"*/*", "image/*", type};
    qsizetype closest = -1;
    double liking = 0;
    const QByteArrayList entries = accept.split(',');
    for (const QByteArray& entry : entries) {
        const QByteArrayList parts = entry.split(';');
        const qsizetype sort = sorts.indexOf(parts.constFirst().trimmed().toLower());
        if (sort <= closest)
            continue;
        closest = sort;
        liking = 1;
        for (const QByteArray& part : parts.sliced(1)) {
            if (part.trimmed().startsWith("q="))
                liking = part.trimmed().sliced(2).toDouble();
        }
    }
    return liking;
}

} // namespace

QString pictureFormat(const http::Request& request)
{
    const QByteArray accept = request.headers.value("Accept").trimmed();
    if (accept.isEmpty())
        return QStringLiteral("svg");
    const double svg = likingOf(svgType, accept);
    const double png = likingOf(pngType, accept);
    if (svg <= 0 && png <= 0)
        throw http::Problem(406, QStringLiteral("A picture is image/svg+xml or image/png."));
    return svg >= png ? QStringLiteral("svg") : QStringLiteral("png");
}

QByteArray pictureType(const QString& format)
{
    return format == QStringLiteral("png") ? pngType : svgType;
}

} // namespace frserver
