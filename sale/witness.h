#pragma once

#include "drivemark.h"
#include "knownmark.h"
#include "movement.h"
#include "registerline.h"
#include "verdict.h"

#include <functional>
#include <optional>

class AbstractFrDriver;

namespace sale {

class DocumentStore;

/// Stands by while a document of ours is made: notes the register's mark before it, and tells afterwards what
/// has become of it. The driver and the line must outlive it.
class Witness
{
public:
    Witness(AbstractFrDriver& driver, const RegisterLine& line, const Movement& ours);

    /// Opens the shift; the verdict has the number of that document where it is known.
    using ShiftOpener = std::function<Verdict()>;

    /// Before the document. For receipts and cash the shift is opened if need be; other documents find it as
    /// it has to be. A mark that is known saves questions on an exclusive register: it is taken when the
    /// register's own answers fit it. Throws the driver's exceptions.
    void note(const ShiftOpener& openShift, const std::optional<KnownMark>& known = {});
    const DriveMark& before() const { return m_before; }
    /// Holds the mark against the journal, see requireKnown, and learns from it the number that it does not
    /// tell itself. A register that others work is not compared, and the mark of cash tells nothing that the
    /// next sale is compared with. A drive that is new to the journal is asked for again where answers have
    /// no check value: under a misread number nobody would find the document again. Another drive than that
    /// of the line is WrongRegister. Throws that, ReviewNeeded, JournalError and the driver's exceptions.
    void compareWith(const DocumentStore& journal);
    /// The number that the drive gives the document; 0 when the mark does not tell.
    Verdict issued() const;

    /// After a close that went well. A document that the driver may have sent more than once is counted: the
    /// verdict says how often it was issued. Throws the driver's exceptions then; the document was issued.
    Verdict afterSuccess();
    /// After a failure: connects, asks, initialises. Nothing when the register cannot be asked.
    std::optional<Verdict> afterFailure();
    /// The mark behind a document that was closed well, read or counted on.
    const std::optional<DriveMark>& after() const { return m_after; }

private:
    bool isOursAlone() const;
    /// The known mark, when the register's answers fit it.
    std::optional<DriveMark> confirmed(const std::optional<KnownMark>& known);
    void noteAnew(const ShiftOpener& openShift, Verdict opening);
    void requireDrive() const;
    /// Whether the register names the drive of the mark once more.
    bool isDriveRepeated() const;

    AbstractFrDriver& m_driver;
    const RegisterLine& m_line;
    const Movement m_ours;
    DriveMark m_before;
    std::optional<DriveMark> m_after;
    quint64 m_connection = 0;
};

} // namespace sale
