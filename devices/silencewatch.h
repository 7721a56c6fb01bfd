#pragma once

#include <QElapsedTimer>

#include <functional>

namespace devices {

/// Notices a register that does not answer. One that has answered before may be merely busy, as with a long
/// receipt, and is given more time.
class SilenceWatch
{
public:
    /// The callback runs once at most for each: when nothing has come for so long behind the first write,
    /// and, with true, when nothing has come for so long later on.
    void start(const std::function<void(bool hasAnswered)>& callback, int firstMs, int laterMs)
    {
        m_callback = callback;
        m_firstMs = firstMs;
        m_laterMs = laterMs;
    }

    /// What is asked again in vain is the same silence.
    void written()
    {
        if (m_callback && (!m_since.isValid() || m_isHeard))
            m_since.start();
        m_isHeard = false;
    }

    /// What comes before the first write is left from others.
    void received()
    {
        if (!m_since.isValid())
            return;
        m_since.start();
        m_isHeard = m_hasAnswered = true;
    }

    /// To be called while something is waited for.
    void look()
    {
        bool& isTold = m_hasAnswered ? m_isLaterTold : m_isFirstTold;
        if (isTold || !m_since.isValid() || m_since.elapsed() < (m_hasAnswered ? m_laterMs : m_firstMs))
            return;
        isTold = true;
        m_callback(m_hasAnswered);
    }

private:
    std::function<void(bool)> m_callback;
    int m_firstMs = 0;
    int m_laterMs = 0;
    /// Since the last that was heard, or the first that was written behind it.
    QElapsedTimer m_since;
    bool m_isHeard = false;
    bool m_hasAnswered = false;
    bool m_isFirstTold = false;
    bool m_isLaterTold = false;
};

} // namespace devices
