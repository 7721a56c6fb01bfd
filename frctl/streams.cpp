#include "streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace frctl {

void makeStreamsSafe()
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // The lowest one that is free is the one that is missing.
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDWR);
    }
    std::signal(SIGPIPE, SIG_IGN);
}

int print(std::FILE* stream, const QString& text)
{
    errno = 0;
    const bool isWritten = std::fputs((text + QLatin1Char('\n')).toUtf8().constData(), stream) >= 0
        && std::fflush(stream) == 0;
    return isWritten ? 0 : errno;
}

} // namespace frctl
