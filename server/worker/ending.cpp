#include "worker/ending.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace frserver::ending {

namespace {

/// A busy register may hold the close of a receipt for 100 s.
constexpr unsigned longestSeconds = 120;

std::array<int, 2> wakePipe{-1, -1};
volatile std::sig_atomic_t wanted = 0;

// Only what a handler may call.
void take(int)
{
    wanted = 1;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], &byte, 1);
    // A plugin that hangs ends by SIGALRM, which nobody catches.
    ::alarm(longestSeconds);
}

} // namespace

void arrange()
{
    if (::pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        ::_exit(1);
    std::signal(SIGTERM, take);
    std::signal(SIGALRM, SIG_DFL);
    for (const int ignored : {SIGINT, SIGHUP, SIGPIPE})
        std::signal(ignored, SIG_IGN);
    sigset_t all;
    sigfillset(&all);
    ::pthread_sigmask(SIG_UNBLOCK, &all, nullptr);
    // A parent that was gone before has left the end of its input behind.
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
}

bool isWanted()
{
    return wanted != 0;
}

int descriptor()
{
    return wakePipe[0];
}

} // namespace frserver::ending
