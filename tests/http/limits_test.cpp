#include "http/admission.h"
#include "http/intake.h"
#include "http/listenerror.h"
#include "http/listensocket.h"
#include "message.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <unistd.h>

using http::Admission;
using http::Intake;
using http::Limits;

namespace {

QByteArray keyOf(const char* digits)
{
    sockaddr_in four{};
    four.sin_family = AF_INET;
    sockaddr_in6 six{};
    six.sin6_family = AF_INET6;
    if (inet_pton(AF_INET, digits, &four.sin_addr) == 1)
        return Admission::keyOf(reinterpret_cast<const sockaddr*>(&four));
    inet_pton(AF_INET6, digits, &six.sin6_addr);
    return Admission::keyOf(reinterpret_cast<const sockaddr*>(&six));
}

const Limits limits{
    .body = 10, .bodies = 15, .connections = 10, .connectionsOfStranger = 2, .connectionsOfCaller = 5};

/// How many get in of an address before one is refused.
int entering(Admission& admission, const QByteArray& key, Admission::Clock::time_point now)
{
    int count = 0;
    for (; admission.mayEnter(key, now); ++count)
        admission.enter(key);
    return count;
}

} // namespace

TEST(Admission, CountsByAddress)
{
    EXPECT_EQ(keyOf("::ffff:10.0.0.1"), keyOf("10.0.0.1"));
    EXPECT_NE(keyOf("10.0.0.2"), keyOf("10.0.0.1"));
    EXPECT_EQ(keyOf("2001:db8::1"), keyOf("2001:db8::ffff:1"));
    EXPECT_NE(keyOf("2001:db8:0:1::1"), keyOf("2001:db8::1"));
}

TEST(Admission, HasMoreRoomForCallersAndAnEndForAll)
{
    Admission admission(limits);
    const Admission::Clock::time_point now{};
    EXPECT_EQ(entering(admission, "a", now), 2);
    admission.showToken("a");
    EXPECT_EQ(entering(admission, "a", now), 3);
    EXPECT_EQ(entering(admission, "b", now), 2);
    EXPECT_EQ(entering(admission, "c", now), 2);
    EXPECT_EQ(entering(admission, "d", now), 1);
    admission.leave("d", false, now);
    EXPECT_EQ(entering(admission, "d", now), 1);
}

TEST(Admission, RemembersACallerForAWhile)
{
    Admission admission(limits);
    const Admission::Clock::time_point now{};
    admission.enter("a");
    admission.showToken("a");
    admission.leave("a", true, now);
    const auto later = now + limits.idle;
    EXPECT_EQ(entering(admission, "a", later - Limits::Time(1)), 5);
    EXPECT_FALSE(admission.mayEnter("a", later));
    for (int count = 0; count < 5; ++count)
        admission.leave("a", false, later);
    EXPECT_EQ(entering(admission, "a", later), 2);
}

TEST(Intake, BoundsBodies)
{
    // pieces: of 5 bytes each, as many as are taken
    // status: 0: none
    const std::tuple<QByteArray, QByteArray, int, bool, int> rows[]
        = {{"10", "", 2, false, 0}, {"", "", 2, false, 0}, {"", "", 3, false, 413}, {"11", "", 2, false, 413},
            {"11", "100-continue", 0, true, 413}, {"10", "100-continue", 2, false, 0},
            {"1000000", "", 0, true, 413}, {"99999999999999999999", "", 0, false, 0}};
    for (const auto& [length, expect, pieces, isHopeless, status] : rows) {
        http::BodyRoom room(limits.bodies);
        QList<http::Headers::Field> headers;
        if (!length.isEmpty())
            headers.append({"Content-Length", length});
        if (!expect.isEmpty())
            headers.append({"Expect", expect});
        Intake intake(limits, room, message("POST", "/", headers));
        for (int piece = 0; piece < pieces; ++piece)
            EXPECT_TRUE(intake.add("12345"));
        EXPECT_EQ(intake.isHopeless(), isHopeless) << length.constData();
        EXPECT_EQ(intake.problem() ? intake.problem()->status() : 0, status) << length.constData();
        EXPECT_EQ(room.taken(), status ? 0 : 5 * pieces);
        EXPECT_EQ(intake.take().body.size(), status ? 0 : 5 * pieces);
        EXPECT_EQ(room.taken(), 0);
    }
}

TEST(Intake, TheLargestMakesRoom)
{
    http::BodyRoom room(limits.bodies);
    Intake large(limits, room, message("POST", "/"));
    Intake small(limits, room, message("POST", "/"));
    large.add("12345678");
    small.add("12345");
    large.add("90");
    EXPECT_FALSE(large.problem());
    small.add("1");
    EXPECT_FALSE(small.problem());
    ASSERT_TRUE(large.problem());
    EXPECT_EQ(large.problem()->status(), 503);
    EXPECT_TRUE(large.problem()->response().headers.contains("Retry-After"));
    EXPECT_EQ(room.taken(), 6);

    Intake another(limits, room, message("POST", "/"));
    another.add("123456789");
    another.add("0");
    EXPECT_TRUE(another.problem());
    EXPECT_FALSE(small.problem());
}

TEST(ListenSocket, SaysWhyItCannot)
{
    namespace listensocket = http::listensocket;
    const int socket = listensocket::open("127.0.0.1", 0);
    const quint16 port = listensocket::portOf(socket);
    ASSERT_NE(port, 0);
    try {
        listensocket::open("127.0.0.1", port);
        ADD_FAILURE() << "two listen at one port";
    } catch (const http::ListenError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr(std::to_string(port)));
    }
    ::close(socket);
    EXPECT_THROW(listensocket::open("localhost", 0), http::ListenError);
    // Documentation's: no machine has it.
    EXPECT_THROW(listensocket::open("192.0.2.1", 0), http::ListenError);
}
