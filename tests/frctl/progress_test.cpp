#include "messages.h"
#include "progress.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QElapsedTimer>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <unistd.h>

namespace {

/// Standard error is a terminal as long as it lives.
class Terminal
{
public:
    Terminal()
        : m_stderr(::dup(STDERR_FILENO))
    {
        int terminal = -1;
        EXPECT_EQ(::openpty(&m_screen, &terminal, nullptr, nullptr, nullptr), 0);
        ::dup2(terminal, STDERR_FILENO);
        ::close(terminal);
    }
    ~Terminal()
    {
        ::dup2(m_stderr, STDERR_FILENO);
        ::close(m_stderr);
        ::close(m_screen);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Reads on until the text stands there.
    bool shows(const QByteArray& text)
    {
        constexpr int longestMs = 10000;
        QElapsedTimer timer;
        timer.start();
        while (!m_seen.contains(text) && timer.elapsed() < longestMs) {
            pollfd entry{m_screen, POLLIN, 0};
            char bytes[256];
            if (::poll(&entry, 1, 100) == 1)
                m_seen.append(bytes, ::read(m_screen, bytes, sizeof bytes));
        }
        return m_seen.contains(text);
    }
    void forget() { m_seen.clear(); }
    const QByteArray& seen() const { return m_seen; }

private:
    int m_stderr;
    int m_screen = -1;
    QByteArray m_seen;
};

} // namespace

// A message must not stand behind the line, and no line is left when all is over.
TEST(Progress, MakesRoomForMessagesAndIsGoneAtTheEnd)
{
    Terminal terminal;
    {
        const frctl::Progress outer(QStringLiteral("sell"), 0);
        EXPECT_TRUE(terminal.shows("\r\033[Ksell ... 0 s"));
        {
            const frctl::Progress inner(QStringLiteral("asking"), 0);
            EXPECT_TRUE(terminal.shows("\r\033[Kasking ... 0 s"));
        }
        terminal.forget();
        EXPECT_TRUE(terminal.shows("sell ... 0 s"));
        frctl::complain(QStringLiteral("no paper"));
        EXPECT_TRUE(terminal.shows("sell ... 0 s\r\033[Kfrctl: no paper\r\n"));
        terminal.forget();
        EXPECT_TRUE(terminal.shows("sell ..."));
    }
    EXPECT_TRUE(terminal.shows("s\r\033[K"));
    terminal.forget();
    const frctl::Progress patient(QStringLiteral("status"), 600000);
    frctl::complain(QStringLiteral("again"));
    EXPECT_TRUE(terminal.shows("frctl: again"));
    EXPECT_FALSE(terminal.seen().contains("status"));
}
