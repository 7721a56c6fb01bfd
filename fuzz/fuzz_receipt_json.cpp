// JSON receipts of frctl: judged for each protocol, and those without errors on through the command, the
// driver and the software register. The input is the text of the file.

#include "harness.h"

#include "cashdesk.h"
#include "errors.h"
#include "exceptions.h"
#include "journalaccess.h"
#include "markrefusal.h"
#include "options.h"
#include "receiptcheck.h"
#include "receiptcommands.h"
#include "receipterror.h"
#include "rig.h"

#include <abstractfrdriver.h>

#include <optional>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A file that only this process has, as the command takes the name of one.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray& text)
    {
        const auto size = static_cast<size_t>(text.size());
        fuzz::require(
            m_file >= 0 && ::write(m_file, text.constData(), size) == text.size(), "no memory file");
    }
    ~MemoryFile() { ::close(m_file); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    QString name() const { return QStringLiteral("/proc/self/fd/%1").arg(m_file); }

private:
    const int m_file = ::memfd_create("receipt", MFD_CLOEXEC);
};

std::optional<receipt::CheckedReceipt> checked(const QByteArray& text, Protocol protocol)
{
    receipt::CheckOptions options;
    options.protocol = protocol == Protocol::Hex ? receipt::Protocol::Hex : receipt::Protocol::Xml;
    options.today = QDate(2026, 1, 1);
    try {
        const receipt::CheckedReceipt checked = receipt::checkedReceipt(text, options);
        for (const receipt::Finding& finding : checked.findings)
            fuzz::require(
                !finding.path.isEmpty() && !finding.reason.isEmpty(), "a finding that says nothing");
        return checked;
    } catch (const receipt::ReceiptError& error) {
        fuzz::require(!error.reason().isEmpty(), "a mistake without a reason");
        return std::nullopt;
    }
}

/// A command of frctl that was read and judged; without a task when it was refused.
struct PreparedSale
{
    frctl::Options options;
    frctl::Task task;
};

PreparedSale prepared(const QByteArray& text, Protocol protocol, const receipt::Receipt& receipt)
{
    const MemoryFile file(text);
    PreparedSale prepared;
    frctl::Options& options = prepared.options;
    options.protocol = protocol == Protocol::Hex ? QStringLiteral("HEX") : QStringLiteral("XML");
    options.command = receipt.isReturn() ? QStringLiteral("refund") : QStringLiteral("sell");
    options.arguments = QStringList{file.name()};
    options.journal = std::make_shared<frctl::JournalAccess>(QStringLiteral(":memory:"));
    if (receipt.cashier.value_or(FrUser()).name.isEmpty())
        options.cashier.name = QStringLiteral("Иванова");
    try {
        prepared.task = frctl::prepareReceipt(options);
    } catch (const frctl::CheckError&) {
        prepared.task = {};
    }
    return prepared;
}

/// Kopecks of the receipts that the register has stored.
QList<qint64> storedTotals(Rig& rig)
{
    QList<qint64> totals;
    for (const QJsonObject& entry : rig.device.journal().entries()) {
        if (entry.contains(QStringLiteral("items")))
            totals.append(
                entry.value(QStringLiteral("total")).toString().remove(QLatin1Char('.')).toLongLong());
    }
    return totals;
}

/// True when the command says that the receipt was issued.
bool isIssued(Rig& rig, const PreparedSale& prepared)
{
    try {
        rig.line.open();
        rig.driver().portOpen();
        sale::CashDesk desk(rig.driver(), prepared.options.journal->store(), prepared.options.desk());
        desk.open();
        prepared.task.onDesk(desk);
        return true;
    } catch (const frctl::RegisterError& error) {
        return error.verdict().outcome == sale::Outcome::Issued;
    } catch (const sale::MarkRefusal&) {
        return false;
    } catch (const DriverException&) {
        // Before the document was begun.
        return false;
    }
}

void issue(const QByteArray& text, Protocol protocol)
{
    const std::optional<receipt::CheckedReceipt> judged = checked(text, protocol);
    if (!judged)
        return;
    const receipt::Receipt& receipt = judged->receipt;
    fuzz::require(receipt.total >= 0 && receipt.paid >= receipt.total, "accepted unpaid");
    const PreparedSale made = prepared(text, protocol, receipt);
    fuzz::require(judged->hasErrors() != static_cast<bool>(made.task.onDesk), "frctl judges otherwise");
    if (!made.task.onDesk)
        return;
    Rig rig(protocol);
    const bool issued = isIssued(rig, made);
    const QList<qint64> stored = storedTotals(rig);
    fuzz::require(stored.size() == (issued ? 1 : 0), "frctl and the register do not agree");
    fuzz::require(!issued || stored.constFirst() == receipt.total, "the register has another total");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    fuzz::prepare();
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    issue(text, Protocol::Hex);
    issue(text, Protocol::Xml);
    return 0;
}
