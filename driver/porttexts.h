#pragma once

#include <QString>

/// Texts for the cashier about the port, the same on both protocols and in the base.
namespace porttexts {

/// The driver was built without a transport.
inline QString noTransport()
{
    return QStringLiteral("Ошибка инициализации драйвера порта");
}

inline QString cannotOpen()
{
    return QStringLiteral("Невозможно открыть порт");
}

} // namespace porttexts
