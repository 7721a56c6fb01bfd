#include "outputpipe.h"

#include "violation.h"

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace {

void closeEnd(int& end)
{
    if (end >= 0)
        ::close(std::exchange(end, -1));
}

} // namespace

OutputPipe::OutputPipe()
{
    // Another program that starts at this moment must not keep it open.
    expect(::pipe2(m_ends, O_CLOEXEC) == 0, QStringLiteral("no pipe"));
    ::fcntl(m_ends[0], F_SETFL, O_NONBLOCK);
}

OutputPipe::~OutputPipe()
{
    close();
    leaveToWriter();
}

void OutputPipe::becomeStream(int number) const
{
    ::dup2(m_ends[1], number);
}

void OutputPipe::leaveToWriter()
{
    closeEnd(m_ends[1]);
}

void OutputPipe::drain()
{
    char piece[4096];
    for (ssize_t count = 1; m_ends[0] >= 0 && count > 0;) {
        count = ::read(m_ends[0], piece, sizeof piece);
        if (count > 0)
            m_text.append(piece, count);
    }
}

void OutputPipe::close()
{
    closeEnd(m_ends[0]);
}
