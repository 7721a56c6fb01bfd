#pragma once

#include <QString>

#include <cstdio>

namespace frctl {

/// Opens /dev/null in the place of each standard stream that the program was started without: otherwise the
/// register's line would become that stream, and the log would be written to the register. To be called
/// before anything else is opened. A pipe that nobody reads is an error of the write from now on.
void makeStreamsSafe();

/// Writes the text and a line's end: 0, or the system's error; EINTR when the program is to end and nobody
/// makes room.
int print(std::FILE* stream, const QString& text);
/// The bytes alone.
int printBytes(std::FILE* stream, const QByteArray& bytes);

} // namespace frctl
