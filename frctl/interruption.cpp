#include "interruption.h"

#include "errors.h"

#include <unistd.h>

#include <csignal>

namespace frctl {

namespace {

volatile std::sig_atomic_t isInterrupted = 0;
volatile std::sig_atomic_t signalCount = 0;

void remember(int signal, siginfo_t* info, void*)
{
    // Whoever reads the output or the log has gone: the write tells that itself, and a sale goes on.
    if (signal == SIGPIPE && info->si_pid == getpid())
        return;
    if (signalCount > 0)
        _exit(ExitInterrupted);
    signalCount = 1;
    isInterrupted = 1;
}

bool isIgnored(int signal)
{
    struct sigaction present = {};
    return sigaction(signal, nullptr, &present) == 0 && (present.sa_flags & SA_SIGINFO) == 0
        && present.sa_handler == SIG_IGN;
}

} // namespace

void catchInterruptions()
{
    struct sigaction action = {};
    action.sa_sigaction = remember;
    // Without SA_RESTART: a call that waits for someone who does not read must not be taken up again.
    action.sa_flags = SA_SIGINFO;
    for (const int signal : {SIGINT, SIGTERM, SIGPIPE, SIGHUP}) {
        // nohup means what it says, and so does a shell that starts a job in the background. SIGPIPE is
        // ignored by this program itself.
        if (signal == SIGPIPE || !isIgnored(signal))
            sigaction(signal, &action, nullptr);
    }
}

void throwIfInterrupted()
{
    // Once: what is cleaned up on the way out waits for the register as well.
    if (isInterrupted == 0)
        return;
    isInterrupted = 0;
    throw Interrupted();
}

bool wasInterrupted()
{
    return signalCount > 0;
}

} // namespace frctl
