#pragma once

#include <QString>

/// Texts for the cashier that more than one place of the driver gives.
namespace spfhex::messages {

inline QString noConnection()
{
    return QStringLiteral("Нет связи с ФР");
}

inline QString badAnswer()
{
    return QStringLiteral("Некорректный ответ от ФР");
}

} // namespace spfhex::messages
