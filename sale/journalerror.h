#pragma once

#include <QString>

#include <stdexcept>

namespace sale {

/// The journal of sales cannot be read or written, or another program is at work on the same sale. The text
/// names the file.
class JournalError : public std::runtime_error
{
public:
    /// What is to be done stands behind the fault in the text.
    explicit JournalError(const QString& fault, const QString& advice = {})
        : std::runtime_error((advice.isEmpty() ? fault : fault + QStringLiteral(": ") + advice).toStdString())
        , m_fault(fault)
        , m_advice(advice)
    {
    }

    QString fault() const { return m_fault; }
    /// Empty where the fault says it.
    QString advice() const { return m_advice; }

private:
    QString m_fault;
    QString m_advice;
};

} // namespace sale
