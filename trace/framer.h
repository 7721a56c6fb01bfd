#pragma once

#include "trace/frame.h"

namespace trace {

/// Cuts what goes one way over a line into frames, whichever protocol they are of and however they come in
/// pieces.
class Framer
{
public:
    explicit Framer(Direction direction)
        : m_direction(direction)
    {
    }

    /// The frames that are whole now.
    QList<QByteArray> feed(const QByteArray& bytes);
    /// Takes what there is of a frame that came to no end; empty when there is nothing.
    QByteArray takeRest();

private:
    /// Size of the frame that the buffer begins with; 0 while it is not whole.
    qsizetype frameSize() const;
    qsizetype textFrameSize() const;
    qsizetype documentSize() const;
    qsizetype noiseSize() const;
    enum class Beginning { None, Perhaps, Sure };
    /// What begins there, as far as it can be told.
    Beginning beginningAt(qsizetype position) const;
    Beginning documentAt(qsizetype position) const;
    QByteArray take(qsizetype size);

    Direction m_direction;
    QByteArray m_buffer;
    /// Of the picture that the last request announced, its ESC included; 0 for none.
    qsizetype m_pictureSize = 0;
};

} // namespace trace
