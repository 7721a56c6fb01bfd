// A PostgreSQL server of the tests' own, with tables that nobody has written to.

#pragma once

#include "postgres/postgresstore.h"
#include "postgresserver.h"

#include <gtest/gtest.h>

namespace sale {

class Postgres : public testing::Test
{
protected:
    Postgres() { server.clear(); }

    static DocumentRequest request(const QString& id) { return {id, "sell", R"({"a": 1})", "till1"}; }
    /// All others' ends.
    void cut()
    {
        connection.value("SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity "
                         "WHERE application_name LIKE 'frspf%' AND pid <> pg_backend_pid()");
    }

    PostgresServer& server = PostgresServer::instance();
    PostgresConnection connection{server.place(), 1000};
};

} // namespace sale
