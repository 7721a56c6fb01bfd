#include "panel/members.h"

#include "http/problem.h"

#include <QJsonArray>

#include <cmath>
#include <limits>

namespace emulator::panel {

Members::Members(const QJsonObject& object, const QString& path)
    : m_object(object)
    , m_path(path)
{
}

void Members::fail(const QString& name, const QString& what) const
{
    throw http::Problem(400, QStringLiteral("%1%2 %3.").arg(m_path, name, what));
}

void Members::know(const QString& name)
{
    if (!m_known.contains(name))
        m_known.append(name);
}

bool Members::has(const QString& name)
{
    know(name);
    return m_object.contains(name);
}

bool Members::isNull(const QString& name)
{
    return has(name) && m_object.value(name).isNull();
}

/// One of them may be the misspelt name of what is missing.
QString Members::unasked() const
{
    QStringList names;
    for (const QString& name : m_object.keys()) {
        if (!m_known.contains(name))
            names.append(name);
    }
    return names.join(QStringLiteral(", "));
}

QJsonValue Members::value(const QString& name)
{
    know(name);
    const QJsonValue found = m_object.value(name);
    if (found.isUndefined())
        fail(name,
            unasked().isEmpty() ? QStringLiteral("is missing")
                                : QStringLiteral("is missing; given are: ") + unasked());
    return found;
}

bool Members::flag(const QString& name)
{
    const QJsonValue found = value(name);
    if (!found.isBool())
        fail(name, QStringLiteral("is true or false"));
    return found.toBool();
}

QString Members::text(const QString& name)
{
    const QJsonValue found = value(name);
    if (!found.isString())
        fail(name, QStringLiteral("is a string"));
    return found.toString();
}

QString Members::word(const QString& name, const QStringList& words)
{
    const QJsonValue found = value(name);
    if (!found.isString() || !words.contains(found.toString()))
        fail(name, QStringLiteral("is one of: ") + words.join(QStringLiteral(", ")));
    return found.toString();
}

qint64 Members::number(const QString& name, qint64 least, qint64 most)
{
    const double found = fraction(name, static_cast<double>(least), static_cast<double>(most));
    if (found != std::floor(found))
        fail(name, QStringLiteral("is a whole number"));
    return static_cast<qint64>(found);
}

double Members::fraction(const QString& name, double least, double most)
{
    const QJsonValue found = value(name);
    if (!found.isDouble() || found.toDouble() < least || found.toDouble() > most)
        fail(name,
            QStringLiteral("is a number from %1 to %2")
                .arg(QString::number(least, 'g', 12), QString::number(most, 'g', 12)));
    return found.toDouble();
}

QJsonArray Members::list(const QString& name)
{
    const QJsonValue found = value(name);
    if (!found.isArray())
        fail(name, QStringLiteral("is a list"));
    return found.toArray();
}

Members Members::object(const QString& name)
{
    const QJsonValue found = value(name);
    if (!found.isObject())
        fail(name, QStringLiteral("is an object"));
    return Members(found.toObject(), m_path + name + QLatin1Char('.'));
}

std::optional<int> Members::optionalNumber(const QString& name, int least)
{
    return has(name) ? std::optional(static_cast<int>(number(name, least, std::numeric_limits<int>::max())))
                     : std::nullopt;
}

std::optional<QString> Members::optionalText(const QString& name)
{
    return has(name) ? std::optional(text(name)) : std::nullopt;
}

void Members::finish() const
{
    for (auto member = m_object.begin(); member != m_object.end(); ++member) {
        if (!m_known.contains(member.key()))
            fail(member.key(),
                m_known.isEmpty()
                    ? QStringLiteral("is not known here, where a body has no meaning")
                    : QStringLiteral("is not known here; known are: ") + m_known.join(QStringLiteral(", ")));
    }
}

} // namespace emulator::panel
