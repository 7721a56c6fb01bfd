#pragma once

#include "report.h"
#include "rig.h"
#include "verdict.h"

#include <functional>
#include <stdexcept>

/// Something happened that must never happen.
class Violation : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What the host believes about its sale.
struct SaleResult
{
    bool issued = false;
    /// Only when the closing failed.
    std::optional<Verdict> verdict;
    QList<FaultKind> faults;
    QString failure;
};

/// A host program as the drivers' contract asks for it.
class Host
{
public:
    struct Rates
    {
        int usual;
        int closing;
    };

    Host(Rig& rig, Protocol protocol, Report& report);

    void start();
    /// Sells once. With a generator for faults the line fails now and then, also in the repair after it.
    SaleResult sell(const QString& name, Random& content, Random* faults);
    /// Kopecks of the last sale.
    qint64 total() const { return m_total; }

private:
    void setFaults(Random* faults, int Rates::*rate);
    void call(const char* name, const std::function<void()>& work);
    void checkCall(const char* name) const;
    frctl::DriveMark noteDrive();
    void fill(const QString& name, Random& content);
    void addPosition(const QString& name, const QString& mark, Random& content);
    void pay(Random& content);
    void close();
    /// A port that is closed and opened again has thrown away the late answers.
    void reconnect(bool reopen);
    std::optional<frctl::DriveMark> askAgain();
    void recover(Random* faults);
    bool restore(bool reopen);
    void prepare();
    void renewShift();

    Rig& m_rig;
    AbstractFrDriver& m_driver;
    const Protocol m_protocol;
    Report& m_report;
    qint64 m_total = 0;
    qint64 m_shiftOpened = 0;
    bool m_marked = false;
    bool m_closing = false;
    bool m_issued = false;
};
