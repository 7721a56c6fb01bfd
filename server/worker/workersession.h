#pragma once

#include "configuration/registersettings.h"
#include "worker/patientstore.h"
#include "worker/workerlease.h"

#include "cashdesk.h"
#include "registerconnection.h"

#include <QJsonObject>

#include <functional>
#include <optional>

namespace devices {
class LineObserver;
}

namespace sale {
struct QueuedDocument;
}

namespace frserver {

struct RegisterCondition;

/// The worker's register and its journal: each operation answers what the service is told, or throws what
/// failed. The port is open and locked from open to close.
class WorkerSession
{
public:
    /// Nothing is opened yet. The lease and the observer must outlive it; the callback runs while the
    /// register is waited for, but not while a document is made.
    WorkerSession(const RegisterSettings& settings, const QString& journal, const WorkerLease& lease,
        devices::LineObserver& observer, const std::function<void()>& waitCallback);

    /// Reaches the register anew: compares it and its drive before anything is asked of documents, settles
    /// what was begun, initialises it. "identity", "condition", "settled" (ids); "unknown": what the drive
    /// has that the journal does not know, in words, empty for nothing; "shift" of one that is open has what
    /// is known of its beginning ("since", "isOpening" and "closed" of ShiftTrace, "seen" of
    /// RegisterCondition::seenOpen). On a failure the port is closed.
    QJsonObject open(bool opensShift);
    /// "left": false when the journal could not take that the register is nobody's now.
    QJsonObject close();
    /// The document that waits under that id: "state" and "kind" of the failure, "text"; "held" (see
    /// Waiting::reason) when it waits still. One that met no paper, or an open cover, and was not issued,
    /// waits again.
    QJsonObject make(const QString& id, bool opensShift);
    /// "condition".
    QJsonObject condition();
    /// Asks the register about a document that is unknown, or was begun.
    QJsonObject settle(const QString& id);
    /// A person has looked: the drive is the one to sell on, and the documents on it are all right.
    QJsonObject accept(const QString& by, const QString& note);
    /// The last operation is over, and nothing is owed by the register.
    void leaveIdle();

private:
    sale::RegisterLine line();
    sale::DocumentStore& journal();
    void connect();
    void enter();
    /// Whether the register is given up with its line.
    enum class Leaving { Line, Register };
    /// The register, when what is being caught is that the line leads to one that is not this one's to work.
    static Leaving leavingOfCaught();
    /// False where the journal did not take it.
    bool leaveRegister(Leaving how);
    bool leaveLine(Leaving how);
    void takeDrive();
    void meetRegister(const sale::RegisterLine& line);
    void requireConnection() const;
    sale::CashDesk& desk(bool opensShift);
    QString readDrive();
    QString unknownDocuments(const RegisterCondition& condition);
    void requireDrive(const QString& drive);
    QJsonArray reach(sale::CashDesk& desk);
    RegisterCondition readCondition();
    QJsonObject shiftJson(const RegisterCondition& condition);
    void setClock(RegisterCondition& condition);
    sale::QueuedDocument makeAt(sale::CashDesk& desk, const QString& id, bool wasOpen);
    QJsonObject answerOf(const sale::QueuedDocument& made);
    bool isRunningInJournal(const QString& id);
    void giveUpFormerDrive(const QString& drive);
    QDateTime localNow() const;

    const RegisterSettings m_settings;
    const QString m_journalFile;
    const WorkerLease& m_lease;
    devices::LineObserver& m_observer;
    const std::function<void()> m_waitCallback;
    bool m_isMaking = false;
    /// Others know that it may have the line.
    bool m_hasEntered = false;
    std::optional<PatientStore> m_journal;
    std::optional<devices::RegisterConnection> m_connection;
    std::optional<sale::CashDesk> m_desk;
    QString m_drive;
    /// Of the register at the line, which somebody else works: it is not disturbed before that one leaves it.
    QString m_takenDrive;
};

} // namespace frserver
