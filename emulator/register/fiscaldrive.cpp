#include "register/fiscaldrive.h"

#include <QCryptographicHash>

namespace emulator {

namespace {

constexpr int lifeInMonths = 15;
constexpr int daysBeforeReplacement = 3;
constexpr int daysBeforeResourceEnds = 30;
constexpr int daysForOperator = 30;
constexpr int daysUntilBlocked = 31;
constexpr qint64 documentsBeforeFull = 100;

} // namespace

FiscalDrive::FiscalDrive(const QString& number, const QDateTime& activated, const DriveLife& life)
    : m_number(number)
    , m_expiry(
          life.daysLeft ? activated.date().addDays(*life.daysLeft) : activated.date().addMonths(lifeInMonths))
{
    m_phase = life.phase;
    if (isActivated())
        store(FiscalType::Registration, activated, "factory");
    if (isArchiveClosed())
        store(FiscalType::DriveClosing, activated, "factory");
    sendAll();
    m_documentsLeft = life.documentsLeft;
}

int FiscalDrive::warnings(const QDateTime& now) const
{
    const qint64 daysLeft = now.date().daysTo(m_expiry);
    int bits = 0;
    if (daysLeft < daysBeforeReplacement)
        bits |= 1;
    if (daysLeft < daysBeforeResourceEnds)
        bits |= 2;
    if (m_documentsLeft && *m_documentsLeft <= documentsBeforeFull)
        bits |= 4;
    if (daysWaiting(now) >= daysForOperator)
        bits |= 8;
    return bits;
}

bool FiscalDrive::isOperatorSilent(const QDateTime& now) const
{
    return daysWaiting(now) >= daysUntilBlocked;
}

qint64 FiscalDrive::daysWaiting(const QDateTime& now) const
{
    const FiscalRecord* const waiting = firstUnsent();
    return waiting == nullptr ? 0 : waiting->dateTime.daysTo(now);
}

FiscalRecord FiscalDrive::store(FiscalType type, const QDateTime& dateTime, const QByteArray& content)
{
    FiscalRecord record{static_cast<quint32>(m_documents.size()) + 1, type, dateTime, {}};
    const QByteArray signedPart = m_number.toLatin1() + QByteArray::number(record.number)
        + dateTime.toString(Qt::ISODate).toLatin1() + content;
    const QByteArray digest
        = QCryptographicHash::hash(signedPart, QCryptographicHash::Sha256).toHex().left(8);
    record.sign = QStringLiteral("%1").arg(digest.toUInt(nullptr, 16), 10, 10, QLatin1Char('0'));
    if (type == FiscalType::Registration || type == FiscalType::RegistrationChange) {
        ++m_registrations;
        m_lastRegistration = dateTime;
        m_phase = isReady() ? DriveLife::fiscalMode : m_phase;
    }
    if (m_documentsLeft)
        m_documentsLeft = qMax<qint64>(0, *m_documentsLeft - 1);
    m_documents.append(record);
    m_prints[record.number % keptPrints] = {};
    return record;
}

void FiscalDrive::keepPrint(const tape::Page& page)
{
    m_prints[last().number % keptPrints] = page;
}

tape::Page FiscalDrive::print(quint32 number) const
{
    const bool kept = number <= last().number && last().number - number < keptPrints;
    return kept ? m_prints[number % keptPrints] : tape::Page();
}

const FiscalRecord* FiscalDrive::find(quint32 number) const
{
    return number == 0 || number > m_documents.size() ? nullptr : &m_documents[number - 1];
}

const FiscalRecord* FiscalDrive::firstUnsent() const
{
    return m_sent < m_documents.size() ? &m_documents[m_sent] : nullptr;
}

} // namespace emulator
