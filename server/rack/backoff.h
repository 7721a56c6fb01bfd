#pragma once

#include <QtGlobal>

#include <algorithm>

namespace frserver {

/// How long to wait before the next try of what fails: 1, 2, 4 ... 60 s.
class Backoff
{
public:
    /// Milliseconds.
    qint64 next()
    {
        const int seconds = m_seconds;
        m_seconds = std::min(2 * m_seconds, longest);
        return seconds * 1000LL;
    }
    void reset() { m_seconds = 1; }

private:
    static constexpr int longest = 60;
    int m_seconds = 1;
};

} // namespace frserver
