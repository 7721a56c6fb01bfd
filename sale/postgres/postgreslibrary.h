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
    /// What is wrong with a connection string by itself, whatever the server would say; empty for nothing.
    QString faultOf(const QString& connection) const;
    /// The code with which the server does not let in who has that connection string, in whichever language
    /// it says why; empty when it does, or does not answer. Does not wait for long.
    QString refusalOf(const QString& connection) const;

private:
    PostgresLibrary();

    void follow(void* connection) const;

    int (*m_socket)(const void* connection) = nullptr;
    int (*m_ping)(const char* options) = nullptr;
    void* (*m_start)(const char* options) = nullptr;
    int (*m_poll)(void* connection) = nullptr;
    int (*m_setVerbosity)(void* connection, int verbosity) = nullptr;
    char* (*m_errorMessage)(const void* connection) = nullptr;
    int (*m_needsPassword)(const void* connection) = nullptr;
    void (*m_finish)(void* connection) = nullptr;
};

} // namespace sale
