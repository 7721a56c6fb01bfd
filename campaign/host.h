#pragma once

#include "issueoptions.h"
#include "issueresult.h"
#include "registerline.h"
#include "report.h"
#include "rig.h"
#include "saleresult.h"

#include <functional>

namespace receipt {
struct Receipt;
}

/// Whether another program works the register, and whether the host knows that it may.
enum class Neighbour { None, Unexpected, Shared };

/// A host program as the drivers' contract asks for it, on the library of sales. It is the watch of the
/// driver's calls, too: each may last no longer than its waits, and repeats nothing.
class Host
{
public:
    /// How many requests of a thousand fail.
    struct Rates
    {
        int usual;
        int closing;
    };

    Host(Rig& rig, Protocol protocol, Report& report, Neighbour neighbour = Neighbour::None);
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    void start();
    /// Sells once. With a generator for faults the line fails now and then, also in the repair after it.
    SaleResult sell(const receipt::Receipt& receipt, Random* faults);

private:
    sale::IssueOptions options() const;
    void setFaults(Random* faults, int Rates::*rate);
    void call(const char* name, const std::function<void()>& work);
    void meetFailure(const char* name);
    void checkCall(const char* name) const;
    void checkCloses(const char* name, const QList<QByteArray>& requests) const;
    void checkFrames(const char* name, const QList<QByteArray>& requests) const;
    /// A port that is closed and opened again has thrown away the late answers.
    void reconnect(bool reopen);
    /// Finds out about the sale whose close failed, if there is one, as long as the register cannot be asked.
    void settle();
    void recover(Random* faults);
    bool restore(bool reopen);
    void prepare();
    void renewShift();

    Rig& m_rig;
    AbstractFrDriver& m_driver;
    const Protocol m_protocol;
    const sale::RegisterLine m_line;
    Report& m_report;
    Random* m_faults = nullptr;
    qint64 m_shiftOpened = 0;
    /// Behind a sale that went well.
    std::optional<sale::DriveMark> m_known;
    /// A sale that is neither issued nor not, so far, and what became of it.
    std::optional<sale::IssueResult> m_unsettled;
    sale::Outcome m_settled = sale::Outcome::Unknown;
    bool m_closeFailed = false;
    /// Those of the sale up to its failure.
    std::optional<QList<FaultKind>> m_fatal;
};
