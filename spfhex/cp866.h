#pragma once

#include <QByteArray>
#include <QString>

namespace spfhex {

/// The text in the device's code page, through Qt's codec.
QByteArray toCp866(const QString& text);

/// A text that came in the device's code page.
QString fromCp866(const QByteArray& bytes);

} // namespace spfhex
