#pragma once

#include <QString>

class QSqlDriver;

namespace sale {

/// What libpq knows and Qt's driver, which brings it, keeps to itself. It is loaded when it is wanted, as the
/// driver is.
class PostgresLibrary
{
public:
    /// Throws JournalError where there is none.
    static const PostgresLibrary& ofProcess();

    /// Of the driver's connection; negative while there is none. While that is asked something this may be
    /// called by another thread.
    int socketOf(const QSqlDriver& driver) const;

private:
    PostgresLibrary();

    int (*m_socket)(const void* connection) = nullptr;
};

} // namespace sale
