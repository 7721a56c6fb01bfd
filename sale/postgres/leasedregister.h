#pragma once

#include <QJsonObject>
#include <QString>

namespace sale {

class PostgresConnection;

/// Who owns a register, for as long as nobody has taken it over.
struct LeasedRegister
{
    /// "owner" and "epoch".
    QJsonObject toJson() const;
    static LeasedRegister fromJson(const QString& registerName, const QJsonObject& json);

    QString registerName;
    QString owner;
    /// Grows with each owner.
    qint64 epoch = 0;
};

/// Of a fiscal drive, as it is compared: blanks may stand around it, and alone where there is none.
QString driveNumber(const QString& told);

/// In a transaction: nobody takes the register over before its end. Throws JournalError when somebody has,
/// and RegisterTaken unless the lease holds that fiscal drive (WorkedDrives), if one is given.
void requireOwner(PostgresConnection& connection, const LeasedRegister& lease, const QString& drive = {});

} // namespace sale
