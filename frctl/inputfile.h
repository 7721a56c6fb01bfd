#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace frctl {

/// The whole file. Throws UsageError when it cannot be read.
QByteArray readFile(const QString& fileName);
/// The lines of a UTF-8 text; the line feed at its end makes no line of its own. Throws UsageError, also
/// for control characters but white space.
QStringList readLines(const QString& fileName);

} // namespace frctl
