#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace receipt {

/// The bytes without the byte order mark that editors put in front of UTF-8.
QByteArray withoutByteOrderMark(const QByteArray& bytes);
/// What keeps the bytes of a file from being UTF-8: the first bad byte and its offset in the file, from 0,
/// its line, and which encoding it looks like.
std::optional<QString> utf8Fault(const QByteArray& bytes);

} // namespace receipt
