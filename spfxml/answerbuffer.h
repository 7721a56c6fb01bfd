#pragma once

#include <QByteArray>

namespace spfxml {

/// Collects the portions of one answer and knows when it is complete. Each byte is looked at once for the end
/// and once for the id, however small the portions are; both may be split over two of them.
class AnswerBuffer
{
public:
    explicit AnswerBuffer(const QByteArray& requestId);

    /// Adds a portion. True when the buffer now holds a whole answer to this request. A whole answer with
    /// another id empties the buffer: it belongs to an earlier request.
    bool append(const QByteArray& portion);
    qsizetype size() const { return m_data.size(); }
    /// What was collected, without the blanks and line ends around it.
    QByteArray trimmed() const { return m_data.trimmed(); }

private:
    const QByteArray m_requestId;
    QByteArray m_data;
};

} // namespace spfxml
