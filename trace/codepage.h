#pragma once

#include <QByteArray>
#include <QString>

namespace trace {

/// Texts of frames are CP866 for the most part.
QString fromCp866(const QByteArray& bytes);

/// As many bytes that tell nothing but what kind of sign stood where: digits become 0, letters become X or x,
/// signs between them stay.
QByteArray standInCp866(const QByteArray& bytes);
/// The same for UTF-8, where each letter keeps its number of bytes. References such as &amp; stay.
QByteArray standInUtf8(const QByteArray& bytes);

} // namespace trace
