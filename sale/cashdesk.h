#pragma once

#include "deskoptions.h"
#include "documentrequest.h"
#include "documentresult.h"
#include "documentsteps.h"
#include "issueresult.h"
#include "knownmark.h"
#include "settledsale.h"
#include "storeddocument.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QStringList>

#include <functional>
#include <optional>
#include <variant>

class AbstractFrDriver;

namespace receipt {
struct CheckedReceipt;
struct Receipt;
} // namespace receipt

namespace sale {

class DocumentStore;
class IdentifiedSale;
struct PlainDocument;

/// One register, its journal and its line: what a host program makes its documents with. Whatever happens,
/// also that the program is killed, the next start with the same journal knows what has become of each
/// document, and the same id makes one sale.
///
/// Each operation that makes a document
/// - writes it into the journal before its first byte, and what has become of it behind its last one;
/// - reaches the register first (open) when that was not done, or when the document before it has failed;
/// - throws nothing: what failed is in the result. A journal that fails ends the work before anything is
/// sent.
///
/// One thread at a time may use it; driver, journal and line must outlive it.
class CashDesk
{
public:
    /// Nothing is asked and nothing written. The driver's port is open.
    CashDesk(AbstractFrDriver& driver, DocumentStore& journal, const DeskOptions& options);

    /// Reaches the register, and settles the documents that this program or another one has begun there and
    /// not brought to their end: those are given back, and stand in the journal with their verdicts. Asks
    /// connect, init and, only if there is something to settle, the register's counters (HEX: 13 exchanges
    /// and those of a mark, twice if it was not issued; XML: 2 and two readings). Throws JournalError and the
    /// driver's exceptions; then nothing was sold and nothing may be sold.
    QList<SettledSale> open();

    /// Issues the receipt of a JSON text, see receipt::checkedReceipt. The id is the host's name for the
    /// sale, 8 to 64 of A-Z a-z 0-9 . _ : -, kept where the sale itself is kept, before the call; an empty
    /// one makes a sale that cannot be asked for again.
    ///
    /// An id that is issued answers again and nothing is sent (IssueResult::isRepeated), one that was not
    /// issued is a new attempt, also with a corrected receipt; one that may have been issued is settled
    /// first, and is answered as unknown if nobody can tell. So after any failure, and after a crash, the
    /// call is made again with the same id until it is issued or a person is needed.
    ///
    /// Asks what issueReceipt asks: a mark before the receipt (HEX: 6 exchanges, XML: 4; on an exclusive
    /// register behind a receipt of ours 2, and over HEX 13 more where the number of the drive's last
    /// document is not known from the document before), the receipt, and after a failure what has become of
    /// it.
    ///
    /// The failure is a receipt::ReceiptError for a receipt that must not be sent (the text has all that is
    /// wrong with it), an InvalidDocumentId or an IdConflict for a wrong id, a MarkRefusal, a ReviewNeeded, a
    /// JournalError, one of the driver's exceptions, or whatever else the host's own device throws.
    IssueResult issue(const QString& id, const QByteArray& json);
    /// The same for a receipt that was read and judged by the host. The body stands for it in the journal:
    /// another body is another receipt.
    IssueResult issue(const QString& id, const receipt::Receipt& receipt, const QByteArray& body);
    /// The receipt of a document that waits in the journal. One that waits there no longer, or for another
    /// register, is not begun: that is a JournalError, and one whose time is over a DocumentExpired.
    IssueResult issue(const StoredDocument& queued, const receipt::Receipt& receipt);

    /// Cash into the drawer or out of it, in kopecks; opens the shift if need be. Counted afterwards: see
    /// Verdict::times. Ids as for issue. Asks a mark before it (HEX: 6 exchanges, XML: 7), over XML another
    /// one behind it.
    DocumentResult cashIn(qint64 kopecks, const QString& id = {});
    DocumentResult cashOut(qint64 kopecks, const QString& id = {});

    /// Opens the shift. Where it was open already there is no document: verdict None without a failure, and
    /// the journal has nothing. Asks first whether it is open (HEX: 1 exchange, XML: 2).
    DocumentResult openShift(const QString& id = {});
    /// Closes the shift with its report, the Z report; the same where it was closed already.
    DocumentResult closeShift(const QString& id = {});
    /// The report on the state of settlements.
    DocumentResult accountingReport(const QString& id = {});
    /// Any other document that the drive numbers, such as a registration: its kind and what it is made of, as
    /// the journal is to have them, and the work on it, of which close is the document and finish what is
    /// asked once it is issued.
    DocumentResult issueReport(const QString& kind, const QJsonObject& details, const DocumentSteps& steps);

    // These leave no trace in the register: one that was broken off is unknown for ever, and harmless.

    /// The report on the shift so far, the X report. One that a register refuses over HEX while its shift is
    /// closed is known not to be made: ShiftIsClosed, after one exchange more.
    DocumentResult xReport(const QString& id = {});
    /// A text of no fiscal meaning; lines that are too long are continued on the next.
    DocumentResult printText(const QStringList& lines, const QString& id = {});
    /// Prints a document of the fiscal drive.
    DocumentResult printCopy(quint32 documentNumber, const QString& id = {});
    /// The last one.
    DocumentResult printLastCopy(const QString& id = {});

    /// Any of those, as it waits in the journal: by its kind and its body, see PlainDocument. As issue of one
    /// that waits.
    DocumentResult make(const StoredDocument& queued);

    /// A person has looked at the documents that the journal does not know (ReviewNeeded): writes that down,
    /// with the register's counters as they are now, which are given back. Throws JournalError and the
    /// driver's exceptions.
    DriveMark acceptUnknown(const QString& by, const QString& note);

    /// The register was reached, and nothing has failed since.
    bool isOpen() const { return m_isOpen; }
    AbstractFrDriver& driver() const { return m_driver; }
    DocumentStore& journal() const { return m_journal; }
    const DeskOptions& options() const { return m_options; }

private:
    using Work = std::function<DocumentResult(IdentifiedSale&)>;
    using ReceiptSource = std::function<receipt::CheckedReceipt()>;

    /// A document that is new, or asked for again; or one that waits in the journal.
    using Entry = std::variant<DocumentRequest, StoredDocument>;

    IssueResult issueReceiptOf(const Entry& entry, const ReceiptSource& source);
    void issueInto(IssueResult& result, IdentifiedSale& document, const ReceiptSource& source);
    template <typename Result>
    void guarded(Result& result, const std::function<void()>& work);
    /// Whether it was opened for that: what the journal says may be another thing then.
    bool reachRegister(bool isSettled);
    std::optional<KnownMark> knownMark() const;
    DocumentRequest requestOf(const QString& id, const QString& kind, const QJsonObject& details = {}) const;
    DocumentRequest receiptRequestOf(const QString& id, const QByteArray& body) const;
    IdentifiedSale documentOf(const Entry& entry) const;
    FrUser cashierOf(const Entry& entry) const;
    DocumentResult makeEntry(const Entry& entry, const Work& work);
    DocumentResult makeNumbered(const Entry& entry, const Movement& ours, const DocumentSteps& steps);
    DocumentResult makeTraceless(const Entry& entry, const DocumentSteps& steps);
    DocumentResult makeShift(
        const Entry& entry, DocumentKind kind, bool isToBeOpen, const std::function<void()>& change);
    DocumentResult makeShiftOpening(const Entry& entry);
    DocumentResult makeShiftClosing(const Entry& entry);
    DocumentResult makeAccountingReport(const Entry& entry);
    DocumentResult makeCash(const Entry& entry, DocumentKind kind, qint64 kopecks);
    DocumentResult makeXReport(const Entry& entry);
    DocumentResult makeText(const Entry& entry, const QStringList& lines);
    DocumentResult makeCopy(const Entry& entry, quint32 documentNumber);
    DocumentResult makeLastCopy(const Entry& entry);
    DocumentResult makePlain(const Entry& entry, const PlainDocument& document);

    AbstractFrDriver& m_driver;
    DocumentStore& m_journal;
    const DeskOptions m_options;
    bool m_isOpen = false;
    /// The last document of ours on this connection was a receipt that went well.
    bool m_isMarkOfConnection = false;
};

} // namespace sale
