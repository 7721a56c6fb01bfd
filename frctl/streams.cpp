#include "streams.h"

#include "interruption.h"
#include "progress.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>

namespace frctl {

namespace {

constexpr int readerWaitMs = 100;

/// False when whoever reads the stream does not, and the program is to end.
bool waitForRoom(int descriptor)
{
    for (;;) {
        // Looked at first, so that a signal between the two calls costs one wait more at most.
        const bool isLastWait = wasInterrupted();
        pollfd entry{descriptor, POLLOUT, 0};
        if (::poll(&entry, 1, readerWaitMs) > 0)
            return true;
        if (isLastWait)
            return false;
    }
}

int writeAll(int descriptor, const QByteArray& bytes)
{
    for (qsizetype written = 0; written < bytes.size();) {
        if (!waitForRoom(descriptor))
            return EINTR;
        // So much a pipe with room takes without a wait.
        const qsizetype portion = std::min<qsizetype>(PIPE_BUF, bytes.size() - written);
        const ssize_t taken = ::write(descriptor, bytes.constData() + written, static_cast<size_t>(portion));
        if (taken < 0 && errno != EINTR && errno != EAGAIN)
            return errno;
        written += std::max<ssize_t>(0, taken);
    }
    return 0;
}

} // namespace

void makeStreamsSafe()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest one that is free is the one that is missing. It takes nothing, so that output which is
        // lost is noticed.
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDONLY);
    }
    std::signal(SIGPIPE, SIG_IGN);
}

int print(std::FILE* stream, const QString& text)
{
    return printBytes(stream, (text + QLatin1Char('\n')).toUtf8());
}

int printBytes(std::FILE* stream, const QByteArray& bytes)
{
    hideProgress();
    return writeAll(::fileno(stream), bytes);
}

} // namespace frctl
