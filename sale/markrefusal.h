#pragma once

#include "finding.h"

#include <QList>
#include <QStringList>

#include <stdexcept>

namespace sale {

/// The register found marking codes of the receipt bad, or did not check them as the host wants it. Nothing
/// was opened.
class MarkRefusal : public std::runtime_error
{
public:
    /// Both lists have an entry for each code that is refused, one at least.
    MarkRefusal(const QList<receipt::Finding>& errors, const QList<QStringList>& bits)
        : std::runtime_error(errors.constFirst().text().toStdString())
        , m_errors(errors)
        , m_bits(bits)
    {
    }

    const QList<receipt::Finding>& errors() const { return m_errors; }
    /// What the register said of each, in words.
    const QList<QStringList>& bits() const { return m_bits; }

private:
    QList<receipt::Finding> m_errors;
    QList<QStringList> m_bits;
};

} // namespace sale
