#include "journalerror.h"
#include "postgres/postgresconnection.h"
#include "postgres/registerleases.h"
#include "postgresfixture.h"

#include <QElapsedTimer>
#include <QUuid>

#include <functional>
#include <vector>

using namespace sale;

namespace {

TEST_F(Postgres, WhoMeetsALockedTableWaitsForItOnceAndTheOthersNot)
{
    const auto monthOf = [this](const QString& words) {
        return connection
            .value("SELECT " + words
                + "(relname) FROM pg_class WHERE relname LIKE 'documents_20%' "
                  "AND relkind = 'r'")
            .toString();
    };
    const QString month = monthOf("min");
    const QString last = monthOf("max");
    const struct
    {
        QString lock;
        bool mayRead;
        bool mayWrite;
    } cases[] = {
        {"LOCK TABLE documents", false, false},
        {"LOCK TABLE documents IN SHARE MODE", true, false},
        {"LOCK TABLE " + month, false, false},
        {"REINDEX TABLE " + month, false, false},
        // What is locked is nobody else's row.
        {"SELECT 1 FROM documents WHERE id = 'A' FOR UPDATE", true, true},
    };
    PostgresStore hasty(server.place(), 50);
    PostgresStore patient(server.place(), 60'000);
    RegisterLeases leases(server.place(), std::chrono::seconds(15));
    ASSERT_TRUE(leases.take({"till1"}));
    patient.accept(request("A"));
    const auto isRefused = [](const std::function<void()>& work) {
        try {
            work();
            return false;
        } catch (const JournalError&) {
            return true;
        }
    };
    for (const auto& [lock, mayRead, mayWrite] : cases) {
        SCOPED_TRACE(lock.toStdString());
        PostgresConnection other(server.place(), 1000);
        // Whoever accepts something first makes the months that are not there.
        PostgresStore first(server.place(), 60'000);
        other.execute("DROP TABLE " + last + ", " + QString(last).replace("documents", "attempts"));
        std::vector<bool> refused;
        QElapsedTimer asked;
        other.together([&, statement = lock] {
            other.execute(statement);
            EXPECT_TRUE(isRefused([&] { hasty.withdraw("A"); }));
            asked.start();
            refused = {isRefused([&] { patient.find({}); }),
                isRefused([&] { patient.accept(request(QUuid::createUuid().toString())); }),
                isRefused([&] { first.accept(request(QUuid::createUuid().toString())); })};
            EXPECT_EQ(leases.renew(), QStringList());
        });
        EXPECT_LT(asked.elapsed(), 30'000);
        EXPECT_EQ(refused, (std::vector<bool>{!mayRead, !mayWrite, !mayWrite}));
        EXPECT_FALSE(isRefused([&] { first.accept(request(QUuid::createUuid().toString())); }));
    }
}

} // namespace
