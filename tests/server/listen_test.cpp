#include "program/listenaddress.h"

#include <gtest/gtest.h>

namespace {

using frserver::ListenAddress;

TEST(ListenAddress, IsOfThisMachineAlone)
{
    struct Row
    {
        const char* text;
        const char* address;
        int port;
        /// Of what it is refused for; empty for one that is taken.
        const char* why;
    };
    const Row rows[]{
        {"8403", "127.0.0.1", 8403, ""},
        {"127.0.0.1:0", "127.0.0.1", 0, ""},
        {"127.8.0.1:80", "127.8.0.1", 80, ""},
        {"localhost:80", "127.0.0.1", 80, ""},
        {"[::1]:80", "::1", 80, ""},
        {"0.0.0.0:80", "", 0, "TLS"},
        {"192.168.0.7:80", "", 0, "TLS"},
        {"[::]:80", "", 0, "TLS"},
        {"[::ffff:127.0.0.1]:80", "", 0, "TLS"},
        {"127.0.0.1.2:80", "", 0, "ADDRESS:PORT"},
        {"127.0.0.1", "", 0, "ADDRESS:PORT"},
        {"127.0.0.1:65536", "", 0, "ADDRESS:PORT"},
        {"till:80", "", 0, "ADDRESS:PORT"},
        {"", "", 0, "ADDRESS:PORT"},
    };
    for (const Row& row : rows) {
        try {
            const ListenAddress listen = ListenAddress::of(row.text);
            EXPECT_STREQ(row.why, "") << row.text;
            EXPECT_EQ(listen.address, row.address) << row.text;
            EXPECT_EQ(listen.port, row.port) << row.text;
        } catch (const std::invalid_argument& error) {
            EXPECT_TRUE(QByteArray(error.what()).contains(row.why) && *row.why != '\0') << error.what();
        }
    }
}

TEST(ListenAddress, IsOfOthersWithTlsAndTokensAlone)
{
    for (const char* const text : {"0.0.0.0:80", "192.168.0.7:80", "[::]:80", "[::ffff:127.0.0.1]:80"}) {
        EXPECT_THROW(ListenAddress::of(text, true, false), std::invalid_argument) << text;
        EXPECT_THROW(ListenAddress::of(text, false, true), std::invalid_argument) << text;
        EXPECT_FALSE(ListenAddress::of(text, true, true).isLoopback()) << text;
    }
    EXPECT_TRUE(ListenAddress::of("127.0.0.1:80", true, false).isLoopback());
}

} // namespace
