#pragma once

#include "memoryline.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

/// The near end of a line with nothing but the calls of the system that the bytes need.
class BareLine
{
public:
    explicit BareLine(const QString& name)
        : m_line(open(name.toLatin1().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK))
    {
    }
    ~BareLine() { close(m_line); }
    BareLine(const BareLine&) = delete;
    BareLine& operator=(const BareLine&) = delete;

    /// True when the answer is what is wanted.
    bool exchange(const MemoryLine::Exchange& wanted)
    {
        const QByteArray& request = wanted.request;
        if (write(m_line, request.constData(), static_cast<size_t>(request.size())) != request.size())
            return false;
        qsizetype count = 0;
        pollfd entry{m_line, POLLIN, 0};
        while (count < wanted.answer.size()) {
            if (poll(&entry, 1, 1000) != 1)
                return false;
            const ssize_t portion
                = read(m_line, m_buffer + count, sizeof m_buffer - static_cast<size_t>(count));
            if (portion <= 0)
                return false;
            count += portion;
        }
        return wanted.answer == QByteArray::fromRawData(m_buffer, count);
    }

private:
    const int m_line;
    char m_buffer[1 << 14];
};
