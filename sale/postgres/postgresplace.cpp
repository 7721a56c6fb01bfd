#include "postgres/postgresplace.h"

#include "postgres/wrongplace.h"
#include "saletr.h"

#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>

namespace sale {

namespace {

const QString scheme = QStringLiteral("postgresql://");
const QString shortScheme = QStringLiteral("postgres://");

QString decoded(const QString& text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

[[noreturn]] void refuse(const QString& why)
{
    throw WrongPlace(tr("the address of the database %1").arg(why),
        tr("it looks like postgresql://USER@HOST:PORT/DATABASE"));
}

/// libpq looks at them only when it comes to use them.
bool isNumberWanted(const QString& key)
{
    return key.startsWith(QStringLiteral("keepalives")) || key.endsWith(QStringLiteral("_timeout"))
        || key == QStringLiteral("port");
}

bool isParameter(const QString& key, const QString& value)
{
    static const QRegularExpression word(QStringLiteral("\\A[a-z_]+\\z"));
    // Of several hosts each has its port.
    static const QRegularExpression numbers(QStringLiteral("\\A[0-9,]*\\z"));
    return word.match(key).hasMatch() && !value.contains(QLatin1Char(';'))
        && (!isNumberWanted(key) || numbers.match(value).hasMatch());
}

void takeParameters(PostgresPlace& place, const QString& text)
{
    for (const auto& [key, value] : QUrlQuery(text).queryItems(QUrl::FullyDecoded)) {
        if (!isParameter(key, value))
            refuse(tr("has a parameter that libpq does not take"));
        if (key == QStringLiteral("host"))
            place.host = value;
        else if (key == QStringLiteral("port"))
            place.port = value;
        else if (key == QStringLiteral("user"))
            place.user = value;
        else if (key == QStringLiteral("password"))
            place.password = value;
        else if (key == QStringLiteral("dbname"))
            place.database = value;
        else
            place.parameters.insert(key, value);
    }
}

} // namespace

bool PostgresPlace::isPlace(const QString& text)
{
    return text.startsWith(scheme) || text.startsWith(shortScheme);
}

PostgresPlace PostgresPlace::of(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("\\Apostgres(?:ql)?://(?:([^:@/?]*)(?::([^@/?]*))?@)?"
                                                        "(\\[[^\\]]*\\]|[^:/?@]*)(?::([0-9]*))?"
                                                        "(?:/([^?]*))?(?:\\?(.*))?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        refuse(tr("cannot be read"));
    PostgresPlace place{decoded(match.captured(1)), decoded(match.captured(2)), decoded(match.captured(3)),
        match.captured(4), decoded(match.captured(5))};
    if (place.host.startsWith(QLatin1Char('[')))
        place.host = place.host.mid(1, place.host.size() - 2);
    takeParameters(place, match.captured(6));
    if (place.database.isEmpty())
        refuse(tr("names no database"));
    return place;
}

QString PostgresPlace::shown() const
{
    const QString at = user.isEmpty() ? QString() : user + QLatin1Char('@');
    const QString behind = port.isEmpty() ? QString() : QLatin1Char(':') + port;
    return scheme + at + host + behind + QLatin1Char('/') + database;
}

} // namespace sale
