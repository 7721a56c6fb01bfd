#pragma once

#include "finding.h"

#include <QList>

#include <stdexcept>

namespace sale {

/// A return would give back what was not sold, or more than that: nothing was accepted.
class ReturnRefused : public std::runtime_error
{
public:
    /// One error at least.
    explicit ReturnRefused(const QList<receipt::Finding>& errors)
        : std::runtime_error(errors.constFirst().text().toStdString())
        , m_errors(errors)
    {
    }

    const QList<receipt::Finding>& errors() const { return m_errors; }

private:
    QList<receipt::Finding> m_errors;
};

} // namespace sale
