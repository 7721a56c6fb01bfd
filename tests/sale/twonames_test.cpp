// One register under two names: who owns it, of those that share a database.

#include "leasefixture.h"

#include "postgres/programlease.h"
#include "postgres/workeddrives.h"
#include "registertaken.h"

#include <QDeadlineTimer>

using namespace sale;

namespace {

/// One register that two owners call by names of their own.
class TwoNames : public Lease
{
protected:
    TwoNames()
    {
        one.take(till1);
        two.take({"kassa9"});
        first.writeAs(one.lease("till1"));
        second.writeAs(two.lease("kassa9"));
        first.accept({"A", "sell", "{}", "till1"});
        second.accept({"B", "sell", "{}", "kassa9"});
        first.fence().takeDrive("9999");
    }
    /// What refuses it; empty when nothing does.
    template <typename Work>
    static std::string refusal(const Work& work)
    {
        try {
            work();
            return {};
        } catch (const RegisterTaken& taken) {
            return taken.what();
        }
    }

    static QString drive() { return "9999"; }

    RegisterLeases one = leases();
    RegisterLeases two = leases();
    PostgresStore first{server.place()};
    PostgresStore second{server.place()};
    const QJsonObject mark{{"drive", "9999"}, {"lastDocument", 7}};
};

TEST_F(TwoNames, HaveOneOwnerAtATime)
{
    connection.execute("UPDATE leases SET host = 'shop2' WHERE register = 'till1'");
    // Blanks may stand around its number.
    const std::string taken = refusal([&] { second.fence().takeDrive(" 9999 "); });
    EXPECT_NE(taken.find("9999 is worked by frserver on shop2, as till1"), std::string::npos) << taken;
    EXPECT_EQ(refusal([&] { second.fence().requireFree("9999"); }), taken);
    EXPECT_NE(refusal([&] { second.begin("B", {mark}); }), "") << "whoever has not asked";
    EXPECT_NE(refusal([&] { second.acceptAndBegin({"C", "sell", "{}", "kassa9"}, {mark}); }), "");
    EXPECT_EQ(second.findId("B")->state, DocumentState::Queued);
    EXPECT_FALSE(second.findId("C"));
    EXPECT_EQ(first.begin("A", {mark}), 1);
    EXPECT_EQ(one.renew() + two.renew(), QStringList()) << "nobody has lost anything over it";
    // Another register of the second one is its own.
    second.fence().takeDrive("8888");
    EXPECT_EQ(refusal([&] { first.fence().requireFree("9999"); }), "");
    // The line is closed: paused, or lost.
    first.fence().leave();
    second.fence().requireFree("9999");
    second.fence().takeDrive("9999");
    EXPECT_EQ(second.begin("B", {mark}), 1);
    EXPECT_NE(refusal([&] { first.fence().takeDrive("9999"); }).find("as kassa9"), std::string::npos);
    EXPECT_EQ(connection.value("SELECT count(*) FROM drives WHERE register = 'kassa9'"), 1);
    // One that tells no number is kept from nobody, and one that was left is another one's at once.
    second.fence().takeDrive(" ");
    first.fence().takeDrive("9999");
    one.release("till1");
    second.fence().takeDrive("9999");
}

TEST_F(TwoNames, OwnerWhoseLeaseIsOverIsNoOwnerOfItsNameEither)
{
    ASSERT_EQ(first.begin("A", {mark}), 1);
    connection.execute("UPDATE leases SET until = now() - interval '1 s' WHERE register = 'till1'");
    connection.together([&] {
        requireOwner(connection, one.lease("till1"), "9999");
        EXPECT_NE(refusal([&] { second.fence().takeDrive("9999"); }), "") << "in the middle of a write";
    });
    second.fence().takeDrive("9999");
    EXPECT_THROW(first.settle("A", 1, {.state = DocumentState::NotIssued}), JournalError);
    EXPECT_EQ(one.renew(), QStringList{"till1"});
    ASSERT_TRUE(one.take(till1));
    first.writeAs(one.lease("till1"));
    EXPECT_NE(refusal([&] { first.fence().takeDrive("9999"); }), "");
    EXPECT_NE(refusal([&] { first.begin("A", {mark}); }), "") << "it has not asked";
    // Whose process has ended is not waited for.
    const Child child;
    ownedBy(child.identity());
    EXPECT_NE(refusal([&] { first.fence().takeDrive("9999"); }), "");
    child.die();
    first.fence().takeDrive("9999");
    EXPECT_EQ(two.renew(), QStringList{"kassa9"});
}

TEST_F(TwoNames, LineThatHasFailedIsAnotherOwnersAndNoPrograms)
{
    PostgresStore person(server.place());
    const auto reach = [&] { person.requireFreeLine("till.shop:5555", true); };
    const auto meet = [&] { person.meetRegister("tcp:10.0.0.7:5555", drive); };
    first.fence().takeDrive("9999", "till.shop:5555");
    EXPECT_EQ(refusal(reach), "") << "of this machine, where one program has the port";
    ownedBy(elsewhere());
    EXPECT_NE(refusal(reach).find("as till1"), std::string::npos);
    EXPECT_EQ(refusal([&] { person.requireFreeLine("till.shop:5556", true); }), "");
    EXPECT_EQ(refusal([&] { person.requireFreeLine({}, true); }), "");
    first.fence().loseLine();
    EXPECT_NE(refusal(reach), "");
    EXPECT_NE(refusal(meet), "") << "it may be what the line has failed of";
    EXPECT_NE(refusal([&] { first.begin("A", {mark}); }), "") << "the register was not met since";
    first.fence().takeDrive("9999", "till.shop:5555");
    EXPECT_EQ(first.begin("A", {mark}), 1);
    // Another name of the same is known for a while once somebody has come by it.
    const auto comeAgain = [&] { PostgresStore(server.place()).requireFreeLine("kassa.shop:5555", true); };
    person.requireFreeLine("kassa.shop:5555", true);
    EXPECT_NE(refusal(meet), "");
    EXPECT_NE(refusal(comeAgain).find("as till1"), std::string::npos);
    connection.execute("UPDATE addresses SET seen = now() - interval '1 hour'");
    EXPECT_EQ(refusal(comeAgain), "");
    first.fence().loseLine();
    second.fence().requireFree("9999");
    second.fence().takeDrive("9999");
    EXPECT_EQ(one.renew() + two.renew(), QStringList()) << "one register was moved, and no lease is over";
    EXPECT_NE(refusal([&] { first.fence().takeDrive("9999"); }).find("as kassa9"), std::string::npos);
    EXPECT_EQ(refusal(reach), "") << "where it is now is not told";
    second.fence().takeDrive("9999", "till.shop:5555");
    second.fence().leave();
    EXPECT_EQ(refusal(reach) + refusal(meet), "");
}

TEST_F(TwoNames, OwnerDoesNotComeWhereSomebodyElseWorksIt)
{
    const QString there = "till.shop:5555";
    const auto come = [](PostgresStore& by, const QString& to, const QString& lastDrive) {
        return refusal([&] { by.fence().requireFreeAddress(to, lastDrive); });
    };
    first.fence().takeDrive("9999", there);
    EXPECT_EQ(come(second, there, {}), "") << "of this machine, where one program has the port";
    ownedBy(elsewhere());
    EXPECT_NE(come(second, there, {}).find("as till1"), std::string::npos);
    EXPECT_NE(come(second, there, " 9999"), "");
    EXPECT_EQ(come(second, there, "8888"), "") << "of a network with the same addresses";
    EXPECT_EQ(come(second, "till.shop:5556", "9999"), "") << "that drive was there before";
    WorkedDrives(connection).noteMet("9999", "kassa.shop:5555");
    EXPECT_NE(come(second, "kassa.shop:5555", {}), "") << "another name of it, by which somebody came";
    EXPECT_EQ(come(first, there, "9999"), "") << "it is its own, whoever had it before";
    first.fence().loseLine();
    EXPECT_EQ(come(second, there, {}), "");
    first.fence().leave();
    ASSERT_TRUE(WorkedDrives(connection).holdForProgram("7777", there));
    ownedBy(elsewhere());
    EXPECT_NE(come(second, there, "8888"), "") << "it may be putting that drive in";
    runOut();
    EXPECT_EQ(come(second, there, {}), "");
}

TEST_F(TwoNames, ProgramThatOwnsNothingKeepsAwayFromWhatSomebodyElseWorks)
{
    ownedBy(elsewhere());
    {
        PostgresStore person(server.place());
        const auto meet = [&] { person.meetRegister("tcp:10.0.0.7:5555", drive); };
        EXPECT_NE(refusal(meet), "");
        EXPECT_NE(refusal([&] {
            person.acceptAndBegin({"C", "sell", "{}", "tcp:10.0.0.7:5555"}, {mark});
        }),
            "");
        EXPECT_FALSE(person.findId("C"));
        first.fence().leave();
        EXPECT_EQ(refusal(meet), "");
        EXPECT_EQ(refusal(meet), "");
        EXPECT_EQ(person.acceptAndBegin({"C", "sell", "{}", "tcp:10.0.0.7:5555"}, {mark}), 1);
        EXPECT_NE(refusal([&] { second.fence().takeDrive("9999"); }).find("by process"), std::string::npos);
        // Another one of this process shares it, and a later drive is the only one that it has.
        PostgresStore other(server.place());
        other.meetRegister("tcp:10.0.0.7:5555", drive);
        person.meetRegister("tcp:10.0.0.7:5555", [] { return QString("8888"); });
        second.fence().takeDrive("9999");
        person.settle("C", 1, {.state = DocumentState::Issued, .documentNumber = 8});
        // One that stood still for long is none any more.
        connection.execute(
            "UPDATE leases SET until = now() - interval '1 s' WHERE register LIKE 'program %'");
        second.fence().takeDrive("8888");
        EXPECT_THROW(person.acceptAndBegin({"D", "sell", "{}", {}}, {{{"drive", "8888"}}}), JournalError);
    }
    EXPECT_EQ(connection.value("SELECT count(*) FROM leases WHERE register LIKE 'program %'"), 0);
}

TEST_F(TwoNames, ProgramKeepsItsLeaseForAsLongAsItIsAtWork)
{
    const auto left = [&] {
        return connection
            .value(
                "SELECT extract(epoch FROM until - clock_timestamp())::float8 FROM leases WHERE register LIKE 'program %'")
            .toDouble();
    };
    first.fence().leave();
    const std::optional<LeasedRegister> lease = WorkedDrives(connection).holdForProgram("9999");
    ASSERT_TRUE(lease);
    connection.execute(
        "UPDATE leases SET until = clock_timestamp() + interval '9 s' WHERE register LIKE 'program %'");
    {
        const ProgramLease renewal(server.place(), *lease, milliseconds(1));
        const QDeadlineTimer patience(10'000);
        while (left() < 60 && !patience.hasExpired())
            ;
    }
    EXPECT_GT(left(), 60);
    // It stood still, and somebody else has the register.
    connection.execute("UPDATE leases SET until = '-infinity' WHERE register LIKE 'program %'");
    second.fence().takeDrive("9999");
    WorkedDrives(connection).renewForProgram(*lease);
    EXPECT_EQ(
        connection.value("SELECT until > clock_timestamp() FROM leases WHERE register LIKE 'program %'"),
        false);
    EXPECT_NE(refusal([&] { first.fence().takeDrive("9999"); }).find("as kassa9"), std::string::npos);
}

} // namespace
