#include "register/fiscaldrive.h"

#include "register/tags.h"
#include "register/tlv.h"

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

FiscalDrive::FiscalDrive(const QString& number, const QDateTime& activated, const FactoryDocuments& documents,
    const DriveLife& life)
    : m_number(number)
    , m_expiry(
          life.daysLeft ? activated.date().addDays(*life.daysLeft) : activated.date().addMonths(lifeInMonths))
{
    m_phase = life.phase;
    if (isActivated())
        store(FiscalType::Registration, activated, documents.registration);
    if (isArchiveClosed())
        store(FiscalType::DriveClosing, activated, documents.closing);
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

FiscalRecord FiscalDrive::store(FiscalType type, const QDateTime& dateTime, const QByteArray& tags)
{
    FiscalRecord record{static_cast<quint32>(m_documents.size()) + 1, type, dateTime, {}, {}};
    const QByteArray signedPart = m_number.toLatin1() + QByteArray::number(record.number)
        + dateTime.toString(Qt::ISODate).toLatin1() + tags;
    const QByteArray digest
        = QCryptographicHash::hash(signedPart, QCryptographicHash::Sha256).toHex().left(8);
    record.sign = QStringLiteral("%1").arg(digest.toUInt(nullptr, 16), 10, 10, QLatin1Char('0'));
    record.tags = tags
        + tlv::encode({{tag::documentNumber, static_cast<qint64>(record.number)},
            {tag::driveNumber, m_number}, {tag::fiscalSign, record.sign}});
    append(record);
    return record;
}

void FiscalDrive::append(const FiscalRecord& record)
{
    if (record.type == FiscalType::Registration || record.type == FiscalType::RegistrationChange) {
        ++m_registrations;
        m_lastRegistration = record.dateTime;
        m_phase = isReady() ? DriveLife::fiscalMode : m_phase;
    }
    if (m_documentsLeft)
        m_documentsLeft = qMax<qint64>(0, *m_documentsLeft - 1);
    m_youngest[record.number % keptPages] = {record, {}, {}};
    m_documents.append(record);
    m_documents.last().tags.clear();
}

void FiscalDrive::keepEntry(const QJsonObject& entry)
{
    m_youngest[last().number % keptPages].entry = entry;
}

void FiscalDrive::keepPrint(const tape::Page& page)
{
    m_youngest[last().number % keptPages].page = page;
}

tape::Page FiscalDrive::print(quint32 number) const
{
    const bool kept = number <= last().number && last().number - number < keptPages;
    return kept ? m_youngest[number % keptPages].page : tape::Page();
}

QList<StoredDocument> FiscalDrive::documentsFrom(quint32 number) const
{
    const qsizetype oldest = qMax<qsizetype>(m_documents.size() - keptPages + 1, 1);
    QList<StoredDocument> documents;
    for (qsizetype next = qMax<qsizetype>(number, oldest); next <= m_documents.size(); ++next)
        documents.append(m_youngest[static_cast<size_t>(next % keptPages)]);
    return documents;
}

void FiscalDrive::restore(const DriveMemory& memory, const QList<StoredDocument>& documents)
{
    m_registrations = 0;
    m_lastRegistration = QDateTime();
    m_documents.clear();
    for (const StoredDocument& document : documents) {
        append(document.record);
        m_youngest[document.record.number % keptPages] = document;
    }
    m_number = memory.number;
    m_expiry = memory.expiry;
    m_phase = memory.phase;
    m_documentsLeft = memory.documentsLeft;
    m_sent = memory.sent;
}

const FiscalRecord* FiscalDrive::find(quint32 number) const
{
    return number == 0 || number > m_documents.size() ? nullptr : &m_documents[number - 1];
}

bool FiscalDrive::has(quint32 number, const QString& sign) const
{
    const FiscalRecord* const record = find(number);
    return record != nullptr && record->sign == sign;
}

const FiscalRecord* FiscalDrive::firstUnsent() const
{
    return m_sent < m_documents.size() ? &m_documents[m_sent] : nullptr;
}

} // namespace emulator
