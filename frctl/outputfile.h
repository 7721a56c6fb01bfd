#pragma once

#include <QByteArray>
#include <QString>

namespace frctl {

/// Puts the bytes into the file in the place of what it holds. A part of them is not left there. Throws
/// HostError.
void writeWholeFile(const QString& fileName, const QByteArray& bytes);

} // namespace frctl
