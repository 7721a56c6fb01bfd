#pragma once

#include <QByteArray>
#include <QString>

/// The register's own code page, CP866, in which it prints and talks on the HEX protocol.
namespace emulator::codepage {

QString toText(const QByteArray& bytes);
QByteArray fromText(const QString& text);
/// Characters that it does not have are written as \u and four hexadecimal digits, and so is the backslash.
QString escaped(const QString& text);
QString unescaped(const QString& text);

} // namespace emulator::codepage
