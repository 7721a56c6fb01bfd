#pragma once

#include <QElapsedTimer>

#include <functional>
#include <utility>

namespace devices {

/// Notices a register that does not answer the first that it is sent. Once anything has come from it, it is
/// merely busy: one that prints a long receipt is silent too.
class SilenceWatch
{
public:
    /// The callback runs once at most, when nothing has come for so long behind the first write.
    void start(const std::function<void()>& callback, int patienceMs)
    {
        m_callback = callback;
        m_patienceMs = patienceMs;
    }

    void written()
    {
        if (m_callback && !m_sinceWrite.isValid())
            m_sinceWrite.start();
    }

    /// What comes before the first write is left from others.
    void received()
    {
        if (m_sinceWrite.isValid())
            m_callback = {};
    }

    /// To be called while something is waited for.
    void look()
    {
        if (!m_callback || !m_sinceWrite.isValid() || m_sinceWrite.elapsed() < m_patienceMs)
            return;
        const std::function<void()> tell = std::exchange(m_callback, {});
        tell();
    }

private:
    std::function<void()> m_callback;
    int m_patienceMs = 0;
    QElapsedTimer m_sinceWrite;
};

} // namespace devices
