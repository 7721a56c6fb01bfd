#pragma once

#include <QString>

/// Texts for the cashier that are the same on both protocols.
namespace drivertexts {

/// The driver was built without a transport.
inline QString noTransport()
{
    return QStringLiteral("Ошибка инициализации драйвера порта");
}

inline QString cannotOpenPort()
{
    return QStringLiteral("Невозможно открыть порт");
}

inline QString noConnection()
{
    return QStringLiteral("Нет связи с ФР");
}

inline QString exchangeFailed()
{
    return QStringLiteral("Ошибка обмена данными");
}

inline QString badAnswer()
{
    return QStringLiteral("Некорректный ответ от ФР");
}

inline QString unsupportedCheckType()
{
    return QStringLiteral("Тип чека не поддерживается ФР");
}

} // namespace drivertexts
