#pragma once

#include <QDateTime>
#include <QString>

namespace sale {

/// A marked piece that was sold, as the journal keeps it.
struct MarkRecord
{
    /// Of the sale; empty for one without.
    QString id;
    /// UTC.
    QDateTime time;
    /// Number of the fiscal drive.
    QString drive;
    /// 0 for a sale of which it is not known whether it was issued.
    quint32 document = 0;
};

} // namespace sale
