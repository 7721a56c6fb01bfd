#pragma once

#include "register/cashmovements.h"
#include "register/documents.h"
#include "register/logo.h"
#include "register/marking.h"
#include "register/pagewriter.h"
#include "register/parts.h"
#include "register/receipts.h"
#include "register/registersnapshot.h"
#include "register/reports.h"
#include "register/shifts.h"
#include "register/timekeeping.h"

namespace emulator {

/// The register itself: its parts, and the duties that judge and change them. It knows no protocol and never
/// waits; every operation changes the state and tells at once how it went.
class Register
{
public:
    explicit Register(const Clock& clock, const Identity& identity = Identity())
        : m_parts(clock, identity)
    {
    }

    /// @name What it is and what it remembers
    /// @{
    const Identity& identity() const { return m_parts.identity; }
    QDateTime now() const { return m_parts.clock.now(); }
    const State& state() const { return m_parts.state; }
    const Document& document() const { return m_parts.state.open.document; }
    const FiscalDrive& drive() const { return m_parts.drive; }
    ParameterStore& parameters() { return m_parts.parameters; }
    const ParameterStore& parameters() const { return m_parts.parameters; }
    Settings& settings() { return m_parts.settings; }
    const Settings& settings() const { return m_parts.settings; }
    bool isShiftTooLong() const { return m_parts.state.shift.isTooLong(now()); }
    bool isDrawerOpen() const { return m_parts.state.drawer.isOpen(m_parts.clock.milliseconds()); }
    /// @}

    /// @name What happens around it
    /// @{
    Tape& tape() { return m_parts.tape; }
    Journal& journal() { return m_parts.journal; }
    Refusals& refusals() { return m_parts.refusals; }
    /// Switched off and on: the document and all counters survive. A protocol with a start command asks for
    /// it before it does anything else.
    void powerCycle() { m_parts.state.isStarted = false; }
    bool isPowered() const { return m_parts.around.isPowered; }
    /// Without power it hears nothing; with it again it is as after powerCycle().
    void setPowered(bool isPowered);
    bool hasPaper() const { return m_parts.state.paper.isIn; }
    /// Takes the roll out, or puts a new one in.
    void setPaper(bool isIn);
    /// So many lines are left on the roll. The document that it ends on is done all the same; quietly means
    /// that the register does not answer so.
    void setPaperLeft(int lines, bool quietly);
    /// Nothing is printed while the cover of the printer is open: a host is told that the printer is not
    /// ready.
    void setCover(bool isOpen);
    /// Held open, until it is shut or a host has it opened anew; or shut.
    void setDrawer(bool isOpen);
    void setOperatorReachable(bool reachable);
    const QList<MarkVerdict>& markVerdicts() const { return m_parts.around.markVerdicts; }
    void setMarkVerdicts(const QList<MarkVerdict>& verdicts) { m_parts.around.markVerdicts = verdicts; }
    /// The clock shows the time of the one that it was given.
    void resetClock() { m_parts.clock.setOffset(0); }
    static bool isClockTime(const QDateTime& time) { return Timekeeping::isClockTime(time); }
    /// False, and nothing is done, when the time is before the last document of the fiscal drive.
    bool setClock(const QDateTime& time);
    double clockSpeed() const { return m_parts.clock.speed(); }
    /// So many times as fast as the clock that it was given.
    void setClockSpeed(double speed) { m_parts.clock.setSpeed(speed); }
    /// What is to be kept over a power cut. The documents of the fiscal drive are kept apart, each once.
    RegisterMemory memory() const;
    /// Power is back: all is as it was kept, and a host has to start the register anew.
    void restore(const RegisterMemory& memory, const QList<StoredDocument>& documents);
    RegisterSnapshot snapshot() const { return {memory(), m_parts.drive}; }
    /// The same with a drive that was kept as a whole.
    void restore(const RegisterSnapshot& snapshot);
    /// As it left the factory, with another drive.
    void reset(const QString& driveNumber);
    /// @}

    /// @name What a host may ask for
    /// @{
    Refusal start(const QDateTime& hostTime) { return Timekeeping(m_parts).start(hostTime); }
    Refusal setTime(const QDateTime& time) { return Timekeeping(m_parts).setTime(time); }
    Refusal openShift(const Cashier& cashier) { return shifts().open(cashier); }
    Shifts shifts() { return Shifts(m_parts); }
    Documents documents() { return Documents(m_parts); }
    /// For lines that become part of a document.
    PageWriter newLines() const { return PageWriter(m_parts); }
    Receipts receipts() { return Receipts(m_parts); }
    CashMovements cash() { return CashMovements(m_parts); }
    Marking marking() { return Marking(m_parts); }
    Reports reports() { return Reports(m_parts); }
    Logo logo() { return Logo(m_parts); }
    /// @}

private:
    void restoreMemory(const RegisterMemory& memory);

    Parts m_parts;
};

} // namespace emulator
