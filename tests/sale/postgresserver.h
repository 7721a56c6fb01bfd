// A PostgreSQL server of the tests' own, in a folder of its own.

#pragma once

#include "postgres/postgresplace.h"

#include <QProcess>
#include <QTemporaryDir>

namespace sale {

class PostgresServer
{
public:
    /// One for the whole program; started by whoever asks first, ended with the program.
    static PostgresServer& instance();

    ~PostgresServer();
    QString address() const { return "postgresql://postgres@/postgres?host=" + m_folder.path(); }
    PostgresPlace place() const { return PostgresPlace::of(address()); }
    void start();
    /// As a power cut: SIGQUIT, and no good-bye.
    void stopAtOnce();
    /// Statements, a line each, while it is there for nobody else.
    void runAlone(const QByteArray& statements);
    /// Tables without a document.
    void clear();

private:
    PostgresServer();
    void asPostgres(QProcess& process) const;

    QTemporaryDir m_folder;
    QProcess m_server;
};

} // namespace sale
