#pragma once

#include <QString>

namespace sale {

/// A process, as others of any machine know it again.
struct ProcessIdentity
{
    static ProcessIdentity own();
    static ProcessIdentity ofProcess(qint64 process);

    enum class Fate {
        Alive,
        /// It will never write anything any more.
        Ended,
        /// It is another machine's, or hidden from this process.
        Unseen
    };
    /// As this process sees it.
    Fate fate() const;
    /// Whether it is held by a signal, and does not end by itself.
    bool isFrozen() const;
    /// Waits so long for its end. Another one that has got its number since is not meant.
    bool waitForEnd(int milliseconds) const;
    /// SIGKILL. False when this user may not.
    bool kill() const;

    bool operator==(const ProcessIdentity& other) const = default;

    /// The machine's own id, which no other one may have.
    QString machine = {};
    /// The boot of its kernel, and the space of its process ids: where both are the same, a number is the
    /// same process's.
    QString space = {};
    qint64 process = 0;
    /// Since boot, as the kernel counts; 0 when it is not told.
    qint64 started = 0;
};

} // namespace sale
