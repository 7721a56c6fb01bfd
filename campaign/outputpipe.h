#pragma once

#include <QByteArray>

/// What a program writes on one of its streams. Its reader can go away, which a QProcess cannot do alone.
class OutputPipe
{
public:
    /// Throws Violation when the system has no pipe.
    OutputPipe();
    ~OutputPipe();
    OutputPipe(const OutputPipe&) = delete;
    OutputPipe& operator=(const OutputPipe&) = delete;

    /// In the program, before it begins: the stream of that number is the pipe.
    void becomeStream(int number) const;
    /// To be called when the program has begun: it alone writes.
    void leaveToWriter();
    /// Takes what is there; all of it once the program has ended.
    void drain();
    const QByteArray& text() const { return m_text; }
    /// The reader goes away.
    void close();

private:
    int m_ends[2] = {-1, -1};
    QByteArray m_text;
};
