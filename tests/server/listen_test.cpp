#include "program/listenaddress.h"

#include <gtest/gtest.h>

namespace {

using frserver::ListenAddress;

TEST(ListenAddress, IsOfThisMachineAloneWithoutTlsAndTokens)
{
    // why: Of what it is refused for; empty for one that is taken.
    const std::tuple<const char*, const char*, int, const char*> rows[] = {
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
    for (const auto& [text, address, port, why] : rows) {
        try {
            const ListenAddress listen = ListenAddress::of(text);
            EXPECT_STREQ(why, "") << text;
            EXPECT_EQ(listen.address, address) << text;
            EXPECT_EQ(listen.port, port) << text;
        } catch (const std::invalid_argument& error) {
            EXPECT_TRUE(QByteArray(error.what()).contains(why) && *why != '\0') << error.what();
        }
        if (QByteArray(why) != "TLS")
            continue;
        EXPECT_THROW(ListenAddress::of(text, true, false), std::invalid_argument) << text;
        EXPECT_THROW(ListenAddress::of(text, false, true), std::invalid_argument) << text;
        EXPECT_FALSE(ListenAddress::of(text, true, true).isLoopback()) << text;
    }
    EXPECT_TRUE(ListenAddress::of("127.0.0.1:80", true, false).isLoopback());
}

} // namespace
