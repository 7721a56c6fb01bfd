#pragma once

#include <pthread.h>

#include <csignal>

namespace sale {

/// Blocks the signals for the threads that are made meanwhile: a wait, or a write, that is to end with a
/// signal is another thread's.
class BlockedSignals
{
public:
    BlockedSignals()
    {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &m_former);
    }
    ~BlockedSignals() { ::pthread_sigmask(SIG_SETMASK, &m_former, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t m_former = {};
};

} // namespace sale
