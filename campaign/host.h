#pragma once

#include "cashdesk.h"
#include "mortalstore.h"
#include "neighbour.h"
#include "report.h"
#include "rig.h"
#include "saleresult.h"

#include <functional>
#include <optional>

namespace receipt {
struct Receipt;
}

/// A host program, which makes its documents with a cash desk and has no rules of its own. It is the watch of
/// the driver's calls, too: each may last no longer than its waits, and repeats nothing.
class Host
{
public:
    struct Setting
    {
        Protocol protocol = Protocol::Hex;
        Neighbour neighbour = Neighbour::None;
        Hazards hazards = {};
    };
    /// How many requests of a thousand fail.
    struct Rates
    {
        int usual;
        int closing;
    };

    /// The journal is what stays of the host when its program is killed.
    Host(Rig& rig, sale::DocumentStore& journal, Report& report, const Setting& setting);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void start();
    /// Closes a shift that has lasted nearly a day.
    void keepShiftShort();
    /// Sells under that id, or is told what has become of it. With a generator for faults the line fails now
    /// and then, also in the repair after it.
    SaleResult sell(const QString& id, const receipt::Receipt& receipt, Random* faults);

private:
    /// Behind each start of the program.
    void sitDown();
    void setFaults(Random* faults, int Rates::*rate);
    void letNeighbourAct();
    void call(const char* name, const std::function<void()>& work);
    void meetFailure(const char* name);
    void checkCall(const char* name) const;
    void checkCloses(const char* name, const QList<QByteArray>& requests) const;
    void checkFrames(const char* name, const QList<QByteArray>& requests) const;
    /// A port that is closed and opened again has thrown away the late answers.
    void reachRegister(bool reopen);
    void recover(Random* faults);
    bool restore(bool reopen);
    /// Both give what it failed of; empty when all went well.
    QString attempt(const QString& id, const receipt::Receipt& receipt);
    QString issue(const QString& id, const receipt::Receipt& receipt);
    /// A person looks at the tape for documents that the journal does not know.
    void review();
    sale::Outcome outcomeOf(const QString& id) const;

    Rig& m_rig;
    const Setting m_setting;
    MortalStore m_journal;
    Report& m_report;
    Random* m_faults = nullptr;
    qint64 m_shiftOpened = 0;
    std::optional<sale::CashDesk> m_desk;
    bool m_needsReview = false;
    bool m_closeFailed = false;
    /// Those of the sale up to its failure.
    std::optional<QList<FaultKind>> m_fatal;
    QList<FaultKind> m_deeds;
};
