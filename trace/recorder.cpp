#include "trace/recorder.h"

#include "trace/traceline.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace trace {

Recorder::Recorder(Sink sink, bool isMasked, Clock clock)
    : m_sink(std::move(sink))
    , m_isMasked(isMasked)
    , m_clock(std::move(clock))
{
}

qint64 Recorder::systemTime()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

void Recorder::begin(const QString& program)
{
    m_sink(traceline::head(m_isMasked));
    m_sink(traceline::note(program));
}

void Recorder::connected()
{
    flush();
    ++m_connection;
}

void Recorder::passed(Direction direction, const QByteArray& bytes)
{
    // Who answers has got what the other one had to say.
    flush(direction == Direction::ToRegister ? Direction::ToHost : Direction::ToRegister);
    for (const QByteArray& frame : framer(direction).feed(bytes))
        write(direction, frame);
}

void Recorder::note(const QString& text)
{
    m_sink(traceline::note(text));
}

void Recorder::flush()
{
    flush(Direction::ToRegister);
    flush(Direction::ToHost);
}

void Recorder::flush(Direction direction)
{
    const QByteArray rest = framer(direction).takeRest();
    if (!rest.trimmed().isEmpty())
        write(direction, rest);
}

void Recorder::write(Direction direction, const QByteArray& bytes)
{
    Frame frame{m_clock(), std::max(1, m_connection), direction, bytes};
    if (m_isMasked)
        frame.bytes = m_mask.masked(frame);
    m_sink(traceline::frame(frame, m_decoder.decode(frame).text()));
}

} // namespace trace
