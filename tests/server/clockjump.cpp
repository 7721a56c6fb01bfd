// A library that a test loads ahead of a program's others: the program's clock is ahead of the computer's by
// the seconds in the file CLOCK_JUMP. The clocks that never jump are left alone.

#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

long jump()
{
    long seconds = 0;
    if (FILE* const file = std::fopen(std::getenv("CLOCK_JUMP"), "r")) {
        if (std::fscanf(file, "%ld", &seconds) != 1)
            seconds = 0;
        std::fclose(file);
    }
    return seconds;
}

} // namespace

extern "C" [[gnu::visibility("default")]] int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    const auto status = static_cast<int>(::syscall(SYS_clock_gettime, clock, time));
    if (status == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += jump();
    return status;
}

extern "C" [[gnu::visibility("default")]] int gettimeofday(timeval* time, void*) noexcept
{
    timespec now{};
    const int status = clock_gettime(CLOCK_REALTIME, &now);
    *time = {now.tv_sec, now.tv_nsec / 1000};
    return status;
}
