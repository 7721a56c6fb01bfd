#include "trace/framer.h"

#include "trace/hexframe.h"
#include "trace/signs.h"
#include "trace/xmldocument.h"

#include <algorithm>

namespace trace {

namespace {

// Nothing that is meant is longer, pictures included.
constexpr qsizetype longestFrame = 4 << 20;

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
}

} // namespace

QList<QByteArray> Framer::feed(const QByteArray& bytes)
{
    m_buffer += bytes;
    QList<QByteArray> frames;
    for (qsizetype size = frameSize(); size > 0; size = frameSize())
        frames.append(take(size));
    return frames;
}

QByteArray Framer::takeRest()
{
    return take(m_buffer.size());
}

QByteArray Framer::take(qsizetype size)
{
    const QByteArray frame = m_buffer.first(size);
    m_buffer.remove(0, size);
    if (m_direction == Direction::ToRegister && frame.startsWith(startOfText))
        // A host may send the picture again before its next request.
        m_pictureSize = hexframe::announcedPicture(frame);
    return frame;
}

Framer::Beginning Framer::documentAt(qsizetype position) const
{
    const QByteArrayView bytes = QByteArrayView(m_buffer).sliced(position);
    for (const QByteArrayView beginning : xmldocument::beginnings) {
        const qsizetype size = std::min(beginning.size(), bytes.size());
        if (bytes.first(size) == beginning.first(size))
            return size == beginning.size() ? Beginning::Sure : Beginning::Perhaps;
    }
    return Beginning::None;
}

Framer::Beginning Framer::beginningAt(qsizetype position) const
{
    switch (m_buffer.at(position)) {
    case startOfText:
    case enquiry:
    case acknowledge:
        return Beginning::Sure;
    case escape:
        return m_pictureSize > 0 ? Beginning::Sure : Beginning::None;
    case '<':
        return documentAt(position);
    default:
        return Beginning::None;
    }
}

qsizetype Framer::frameSize() const
{
    if (m_buffer.isEmpty() || m_buffer.size() > longestFrame)
        return m_buffer.size();
    if (beginningAt(0) == Beginning::None)
        return noiseSize();
    switch (m_buffer.at(0)) {
    case startOfText:
        return textFrameSize();
    case escape:
        return m_buffer.size() >= m_pictureSize ? m_pictureSize : 0;
    case '<':
        return documentSize();
    default:
        return 1;
    }
}

qsizetype Framer::textFrameSize() const
{
    const qsizetype end = m_buffer.indexOf(endOfText);
    // A host gives a frame up by beginning anew; an answer may hold a second STX.
    const qsizetype next = m_direction == Direction::ToRegister ? m_buffer.indexOf(startOfText, 1) : -1;
    if (next > 0 && (end < 0 || next < end))
        return next;
    if (end < 0)
        return 0;
    constexpr int checkDigits = 2;
    int digits = 0;
    for (qsizetype position = end + 1; position < m_buffer.size(); ++position) {
        // A register that works says so even there.
        const bool isSign = m_direction == Direction::ToHost && m_buffer.at(position) == acknowledge;
        digits += isSign ? 0 : 1;
        if (digits == checkDigits)
            return position + 1;
    }
    return 0;
}

qsizetype Framer::documentSize() const
{
    static const QByteArray end = "</ArmRe";
    const qsizetype tag = m_buffer.indexOf(end);
    const qsizetype close = tag < 0 ? -1 : m_buffer.indexOf('>', tag);
    if (close < 0)
        return 0;
    const auto behind = std::find_if_not(m_buffer.cbegin() + close + 1, m_buffer.cend(), isBlank);
    return behind - m_buffer.cbegin();
}

qsizetype Framer::noiseSize() const
{
    for (qsizetype position = 1; position < m_buffer.size(); ++position) {
        const Beginning beginning = beginningAt(position);
        if (beginning == Beginning::Perhaps)
            break;
        if (beginning == Beginning::Sure)
            return position;
    }
    // More of it may be on its way.
    return 0;
}

} // namespace trace
