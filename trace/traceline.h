#pragma once

#include "trace/frame.h"

#include <optional>

namespace trace {

/// The lines of a trace. It begins with a head,
///
///     # frtrace 1 masked
///
/// or "full"; each program that adds to it writes a head of its own, which must be the same. Then there is a
/// line a frame: local time with microseconds and offset, number of the connection, ">" for what goes to the
/// register and "<" for what comes from it, the bytes as hexadecimal digits, and behind them what they mean,
/// which readers pass over:
///
///     2026-03-01T14:05:09.123456+03:00 1 > 02515A5857204130033536 HEX RequestStateStatus(A0) id=20
///
/// Lines that begin with "#" are notes.
namespace traceline {

QByteArray head(bool isMasked);
/// True for one of this version, and what it says.
bool isHead(const QByteArray& line);
bool isMaskedHead(const QByteArray& line);
QByteArray note(const QString& text);
QByteArray frame(const Frame& frame, const QString& meaning);

/// Without the end of the line. Nothing for one that is no frame, with the reason.
std::optional<Frame> parse(const QByteArray& line, QString& error);
/// Its bytes are followed by their meaning: they cannot have been cut.
bool hasMeaning(const QByteArray& line);

} // namespace traceline

} // namespace trace
