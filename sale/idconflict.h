#pragma once

#include "saletr.h"

#include <QDateTime>
#include <QString>

#include <stdexcept>

namespace sale {

/// The id of a document belongs to another one: a mistake of the caller, nothing was sent.
class IdConflict : public std::runtime_error
{
public:
    /// The time is that of the first one.
    IdConflict(const QString& id, const QDateTime& time)
        : std::runtime_error(tr("\"%1\" is the id of another receipt, of %2")
                                 .arg(id, time.toLocalTime().toString(Qt::ISODate))
                                 .toStdString())
        , m_time(time)
    {
    }

    const QDateTime& time() const { return m_time; }

protected:
    enum class Words {};

    IdConflict(Words, const QString& text, const QDateTime& time)
        : std::runtime_error(text.toStdString())
        , m_time(time)
    {
    }

private:
    QDateTime m_time;
};

} // namespace sale
