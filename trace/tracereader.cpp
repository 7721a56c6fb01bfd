#include "trace/tracereader.h"

#include "trace/traceline.h"
#include "trace/tracetr.h"

#include <algorithm>
#include <optional>

namespace trace {

namespace {

class Reading
{
public:
    explicit Reading(const QByteArray& text)
        : m_lines(text.split('\n'))
    {
    }

    Trace take();

private:
    void readLine(qsizetype index);
    void readFrame(qsizetype index);
    /// The line has no end, or what follows it is another program's.
    bool mayBeCut(qsizetype index) const;

    QList<QByteArray> m_lines;
    Trace m_trace;
    /// Connections of the programs before.
    int m_before = 0;
    int m_highest = 0;
};

Trace Reading::take()
{
    if (!traceline::isHead(m_lines.constFirst()))
        throw TraceError(tr("line 1: is not the head of a trace, \"# frtrace 1\""));
    // Behind the last line's end there is nothing.
    const qsizetype count = m_lines.constLast().isEmpty() ? m_lines.size() - 1 : m_lines.size();
    for (qsizetype index = 0; index < count; ++index)
        readLine(index);
    return m_trace;
}

void Reading::readLine(qsizetype index)
{
    const QByteArray& line = m_lines.at(index);
    if (traceline::isHead(line)) {
        const bool isMasked = traceline::isMaskedHead(line);
        m_trace.isMixed = m_trace.isMixed || (index > 0 && isMasked != m_trace.isMasked);
        m_trace.isMasked = isMasked && !m_trace.isMixed;
        m_before = m_highest;
    } else if (line.startsWith('#')) {
        m_trace.notes.append({m_trace.frames.size(), QString::fromUtf8(line.mid(1)).trimmed()});
    } else {
        readFrame(index);
    }
}

void Reading::readFrame(qsizetype index)
{
    const QByteArray& line = m_lines.at(index);
    QString error;
    std::optional<Frame> frame = traceline::parse(line, error);
    const bool isCut = mayBeCut(index);
    m_trace.isCut = m_trace.isCut || isCut;
    // Without its meaning nobody knows whether all of its bytes are there.
    if (isCut && (!frame || !traceline::hasMeaning(line)))
        return;
    if (!frame)
        throw TraceError(tr("line %1: %2").arg(index + 1).arg(error));
    frame->connection += m_before;
    m_highest = std::max(m_highest, frame->connection);
    m_trace.frames.append(*frame);
}

bool Reading::mayBeCut(qsizetype index) const
{
    const bool isLast = index == m_lines.size() - 1;
    return isLast || (traceline::isHead(m_lines.at(index + 1)) && !traceline::hasMeaning(m_lines.at(index)));
}

} // namespace

Trace readTrace(const QByteArray& text)
{
    return Reading(text).take();
}

} // namespace trace
