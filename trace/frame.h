#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace trace {

enum class Direction { ToRegister, ToHost };

/// What went over a line in one piece: a request, an answer, a single sign of the line, or bytes that are
/// none of these.
struct Frame
{
    /// Since 1970, UTC: when it was handed to the line, or when its last byte came.
    qint64 microseconds = 0;
    /// Counted from 1.
    int connection = 1;
    Direction direction = Direction::ToRegister;
    QByteArray bytes;

    bool operator==(const Frame&) const = default;
};

/// A line of the trace that is no frame.
struct Note
{
    /// How many frames stand before it.
    qsizetype position = 0;
    QString text;
};

/// A trace as it was read.
struct Trace
{
    /// Stand-ins take the place of names, addresses and passwords in all of it.
    bool isMasked = false;
    /// Only in some part of it: the trace is as good as full.
    bool isMixed = false;
    /// A line has no end: the last one, or one before the head of another program's part, as when whoever
    /// wrote it was killed. It is among the frames only where it stands there whole.
    bool isCut = false;
    QList<Frame> frames;
    QList<Note> notes;

    /// Whatever a mask hides may be any value.
    bool hasStandIns() const { return isMasked || isMixed; }
};

} // namespace trace
