#include "progress.h"

#include <unistd.h>

#include <cstdio>

namespace frctl {

Progress::Progress(const QString& text)
    : m_isShown(isatty(STDERR_FILENO) != 0)
{
    if (!m_isShown)
        return;
    std::fputs(text.toUtf8().constData(), stderr);
    std::fflush(stderr);
}

Progress::~Progress()
{
    // Back to the start of the line, and blank to its end.
    if (m_isShown)
        std::fputs("\r\033[K", stderr);
}

} // namespace frctl
