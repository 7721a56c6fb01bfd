#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// What the trace of a register tells of the answers that it gave. A line of the trace is written when all of
/// its answer is kept, and before any of it leaves.
class WireTrace
{
public:
    /// What hosts were told of the document that is open over HEX.
    struct Progress
    {
        int phase = 0;
        int positions = 0;

        bool operator==(const Progress&) const = default;
    };

    void feed(const QByteArray& text);
    bool isReady() const { return m_isReady; }
    /// Lines of the trace, both directions.
    int lines() const { return m_lines; }
    /// Those since the request that opened a document over HEX; 0 before it.
    int documentLines() const { return m_openingLine == 0 ? 0 : m_lines - m_openingLine + 1; }
    /// A request that closes a document has come.
    bool hasClosing() const { return m_hasClosing; }
    /// It was answered.
    bool isClosingAnswered() const { return m_isClosingAnswered; }
    /// What else it said.
    QString otherLines() const { return QString::fromUtf8(m_other); }

    /// After the last answer; no value before the first one that tells.
    const std::optional<Progress>& answered() const { return m_answered; }
    /// After the request that has no answer yet, if it is one that changes it.
    std::optional<Progress> underWay() const;
    /// Numbers and signs of the documents that answers over XML told of.
    const QList<QByteArray>& signs() const { return m_signs; }

private:
    void readLine(const QByteArray& line);
    void readAnswer(const QByteArray& bytes);
    /// What a command that was carried out makes of the document.
    static std::optional<Progress> after(const QByteArray& command, const std::optional<Progress>& before);

    QByteArray m_rest;
    QByteArray m_other;
    /// Over HEX of the request that has no answer yet.
    QByteArray m_command;
    bool m_isReady = false;
    bool m_hasClosing = false;
    bool m_isClosingAnswered = false;
    int m_lines = 0;
    int m_openingLine = 0;
    std::optional<Progress> m_answered;
    QList<QByteArray> m_signs;
};
