#include "interruption.h"

#include "errors.h"

#include <csignal>

namespace frctl {

namespace {

volatile std::sig_atomic_t interrupted = 0;

void remember(int)
{
    interrupted = 1;
}

} // namespace

void catchInterruptions()
{
    struct sigaction action = {};
    action.sa_handler = remember;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

void throwIfInterrupted()
{
    if (interrupted != 0)
        throw Interrupted();
}

} // namespace frctl
