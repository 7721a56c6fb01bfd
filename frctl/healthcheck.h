#pragma once

#include "documentanswer.h"
#include "frctltr.h"

#include <QJsonObject>
#include <QString>

#include <optional>

namespace frctl {

/// One line of the command doctor.
struct HealthCheck
{
    /// What was looked at, one word for people and machines.
    QString name;
    /// Nothing where it is not told, or could not be asked.
    std::optional<bool> isWell;
    QString text;
    /// What to do about it; empty where nothing is to be done.
    QString action = {};

    QString line() const
    {
        const QString mark = !isWell ? QStringLiteral("-") : *isWell ? tr("ok") : tr("WRONG");
        const QString told = QStringLiteral("%1 %2: %3").arg(mark.leftJustified(5), name, text);
        return action.isEmpty() ? told : told + QStringLiteral("; ") + action;
    }
    QJsonObject json() const
    {
        return {{QStringLiteral("name"), name},
            {QStringLiteral("ok"), isWell ? QJsonValue(*isWell) : QJsonValue()},
            {QStringLiteral("text"), text}, {QStringLiteral("action"), sale::textOrNull(action)}};
    }
};

inline HealthCheck well(const char* name, const QString& text)
{
    return {QLatin1String(name), true, text};
}

inline HealthCheck wrong(const char* name, const QString& text, const QString& action)
{
    return {QLatin1String(name), false, text, action};
}

inline HealthCheck untold(const char* name, const QString& text)
{
    return {QLatin1String(name), std::nullopt, text};
}

} // namespace frctl
