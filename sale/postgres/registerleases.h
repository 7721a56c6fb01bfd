#pragma once

#include "postgres/leasedregister.h"
#include "postgres/postgresconnection.h"
#include "postgres/processidentity.h"

#include <QHash>
#include <QList>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

namespace sale {

/// Keeps registers this process's own, among those that share the database: at most one has a register at a
/// time. The database's clock tells when a lease ends. This process counts by a clock of its own that nobody
/// sets and that goes on while the machine sleeps, from before it asked, and stops a fifth before the end.
/// One whose process is known to have ended is not waited for. All operations throw JournalError.
class RegisterLeases
{
public:
    using Clock = std::function<std::chrono::milliseconds()>;
    /// CLOCK_BOOTTIME.
    static std::chrono::milliseconds timeSinceBoot();

    RegisterLeases(
        const PostgresPlace& place, std::chrono::milliseconds term, const Clock& clock = timeSinceBoot);

    /// A register that this process would work.
    struct Wish
    {
        QString registerName;
        /// Its line ends at this machine, and another one cannot reach it.
        bool isBound = false;
        /// Somebody has said that it stands here now, whichever machine had it.
        bool isMovedHere = false;
    };
    struct Standing
    {
        enum Kind {
            /// This process has it, or may take it.
            Free,
            Owned,
            /// Its line ends at another machine, as far as is known.
            OtherMachine,
        };
        Kind kind = Free;
        /// Of the owner, for people.
        QString host = {};
        qint64 process = 0;
    };

    /// Registers that somebody has, whoever that is.
    static QStringList leased(const SqlConnection& connection);
    /// All at once.
    QHash<QString, Standing> standings(const QList<Wish>& wishes);
    /// False when it is not free, or another process is about to take it.
    bool take(const Wish& wish);
    /// All that are this process's, in one statement; a third of the term is a good time for it. Gives those
    /// that it has no more.
    QStringList renew();
    /// Others know for some minutes that this process would work those.
    void want(const QStringList& registers);
    /// Releases one that another process would work, too, and does not take it again before that one has had
    /// time to. False when there is none that is known.
    bool giveWay(const QString& registerName);
    /// See WorkedDrives::leave.
    void leaveDrive(const QString& registerName);
    /// And is not wanted any more.
    void release(const QString& registerName);
    /// Notes the workers of this machine that have ended without leave, so that no other machine takes them
    /// for ones that may still send something for longer than a network may, and forgets programs that left
    /// long ago.
    void tidy();
    /// Only then the register may be worked, and a document begun.
    bool isHeld(const QString& registerName) const;
    /// On this process's clock.
    std::chrono::milliseconds heldUntil(const QString& registerName) const;
    /// Of the last take that came through.
    LeasedRegister lease(const QString& registerName) const;

private:
    static constexpr int patienceMs = 1'000;
    struct Held
    {
        qint64 epoch = 0;
        std::chrono::milliseconds from{0};
    };

    bool isFree(const Wish& wish);
    void end(const QString& registerName);
    /// Gives its epoch.
    qint64 write(const Wish& wish);

    PostgresConnection m_connection;
    const std::chrono::milliseconds m_term;
    const Clock m_clock;
    const QString m_owner;
    QHash<QString, Held> m_held;
    /// Until when it is left to others.
    QHash<QString, std::chrono::milliseconds> m_rests;
};

} // namespace sale
