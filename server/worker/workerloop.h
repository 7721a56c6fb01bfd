#pragma once

#include "worker/linetick.h"
#include "worker/workerchannel.h"
#include "worker/workerlease.h"
#include "worker/workersession.h"

#include <memory>

namespace frserver {

/// Takes one message after the other and answers it, until the service has no more.
///
/// A message has a number "n" and what to "do": "start" with "register" and "journal", first and once; "open"
/// and "make" with "opensShift", "make" and "settle" with "id", "state", "accept" with "by" and "note",
/// "close". With each, and alone also in the middle of it, comes the "lease" of a register that others may
/// work, too (WorkerLease). The answer has the number as "re" and what WorkerSession says, or a "failure"
/// with "reason" and "text"; "exchanges" has their "count" and the "us" that the register took for them.
/// Before it comes {"at": n} as it is begun, and {"line": "written"} or "read" as the line is at work.
class WorkerLoop
{
public:
    WorkerLoop();

    /// The program's exit status.
    int run();

private:
    QJsonObject answer(const QJsonObject& message);
    QJsonObject work(const QJsonObject& message);
    void start(const QJsonObject& message);
    void takeLease(const QJsonObject& message);

    WorkerChannel m_channel;
    WorkerLease m_lease;
    LineTick m_tick;
    std::unique_ptr<WorkerSession> m_session;
};

/// The program with --worker; a QCoreApplication stands.
int runWorker();

} // namespace frserver
