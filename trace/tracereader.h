#pragma once

#include "trace/frame.h"

#include <stdexcept>

namespace trace {

/// A text that is no trace; says which line is wrong and why.
class TraceError : public std::runtime_error
{
public:
    explicit TraceError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

/// Connections of programs that added to the trace one after the other are counted on. A line that broke off,
/// at the end or before another program's head, is left out; all else that is no line of a trace throws
/// TraceError.
Trace readTrace(const QByteArray& text);

} // namespace trace
