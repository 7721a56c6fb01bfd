#pragma once

#include "trace/framer.h"
#include "trace/mask.h"
#include "trace/meaning.h"

#include <functional>

namespace trace {

/// Makes the lines of a trace from what goes over a line, in whatever pieces it goes.
class Recorder
{
public:
    /// Takes a line with its end.
    using Sink = std::function<void(const QByteArray& line)>;
    /// Microseconds since 1970.
    using Clock = std::function<qint64()>;

    Recorder(Sink sink, bool isMasked, Clock clock = systemTime);

    /// The head.
    void begin(const QString& program);
    /// From now on it is another connection.
    void connected();
    void passed(Direction direction, const QByteArray& bytes);
    void note(const QString& text);
    /// Writes what came to no end.
    void flush();

    static qint64 systemTime();

private:
    Framer& framer(Direction direction)
    {
        return direction == Direction::ToRegister ? m_requests : m_answers;
    }
    void write(Direction direction, const QByteArray& bytes);
    void flush(Direction direction);

    Sink m_sink;
    bool m_isMasked;
    Clock m_clock;
    int m_connection = 0;
    Framer m_requests{Direction::ToRegister};
    Framer m_answers{Direction::ToHost};
    Mask m_mask;
    Decoder m_decoder;
};

} // namespace trace
