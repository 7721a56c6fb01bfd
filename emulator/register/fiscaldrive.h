#pragma once

#include "register/drivelife.h"
#include "register/drivememory.h"
#include "register/factorydocuments.h"
#include "register/storeddocument.h"

#include <QList>

#include <array>

namespace emulator {

/// The fiscal drive: it numbers and signs the documents and keeps them for the OFD.
class FiscalDrive
{
public:
    FiscalDrive(const QString& number, const QDateTime& activated, const FactoryDocuments& documents,
        const DriveLife& life = {});

    const QString& number() const { return m_number; }
    QDate expiry() const { return m_expiry; }
    bool isExpired(const QDateTime& now) const { return now.date() > m_expiry; }
    QString version() const { return QStringLiteral("fn_v_1_2  emulated"); }
    /// Bits that fill up with age: 1 ready, 2 fiscal mode, 4 after it, 8 archive read.
    int lifePhase() const { return m_phase; }
    /// Registered, and not closed yet: it takes documents.
    bool isInFiscalMode() const { return m_phase == DriveLife::fiscalMode; }
    /// It waits for its registration.
    bool isReady() const { return m_phase == DriveLife::ready; }
    bool isArchiveClosed() const { return (m_phase & archiveClosedBit) != 0; }
    bool isActivated() const { return (m_phase & activatedBit) != 0; }
    /// No room for a new document. What ends something that was begun always finds some.
    bool isFull() const { return m_documentsLeft == 0; }
    QDateTime lastRegistration() const { return m_lastRegistration; }
    int registrationsDone() const { return m_registrations; }
    int registrationsLeft() const { return maxRegistrations - m_registrations; }
    /// Bits: 1 urgent replacement, 2 resource ends, 4 memory nearly full, 8 the OFD has been silent too long.
    int warnings(const QDateTime& now) const;

    /// The oldest document that the OFD has not got is too old for new ones to be stored.
    bool isOperatorSilent(const QDateTime& now) const;

    /// The tags are those that the register gives; the drive adds its own number, the document's and the
    /// sign.
    FiscalRecord store(FiscalType type, const QDateTime& dateTime, const QByteArray& tags);
    /// Keeps the journal's entry of the last document. Of entries and pages only the youngest are kept.
    void keepEntry(const QJsonObject& entry);
    /// Keeps what was printed of the last document, for a reprint.
    void keepPrint(const tape::Page& page);
    tape::Page print(quint32 number) const;

    /// A record with the number 0 when there is none.
    FiscalRecord last() const { return m_documents.isEmpty() ? FiscalRecord() : m_documents.constLast(); }
    const FiscalRecord* find(quint32 number) const;
    /// That document itself, and not another one of its number.
    bool has(quint32 number, const QString& sign) const;
    /// Documents that the OFD has not got.
    int queueLength() const { return static_cast<int>(m_documents.size() - m_sent); }
    const FiscalRecord* firstUnsent() const;
    /// The OFD takes everything there is.
    void sendAll() { m_sent = m_documents.size(); }

    /// @name Over a power cut
    /// @{
    DriveMemory memory() const
    {
        return {m_number, m_expiry, m_phase, m_documentsLeft, m_documents.size(), m_sent};
    }
    /// The documents from this number on, as far back as tags, entries and pages are kept.
    QList<StoredDocument> documentsFrom(quint32 number) const;
    /// The drive as it was, with all its documents.
    void restore(const DriveMemory& memory, const QList<StoredDocument>& documents);
    /// @}

private:
    /// Days that the oldest document has waited for the OFD.
    qint64 daysWaiting(const QDateTime& now) const;
    void append(const FiscalRecord& record);

    static constexpr int maxRegistrations = 12;
    static constexpr int activatedBit = 2;
    static constexpr int archiveClosedBit = 4;
    static constexpr qsizetype keptPages = 256;

    QString m_number;
    QDate m_expiry;
    int m_phase = DriveLife::ready;
    std::optional<qint64> m_documentsLeft;
    int m_registrations = 0;
    QDateTime m_lastRegistration;
    QList<FiscalRecord> m_documents;
    qsizetype m_sent = 0;
    /// Records with their tags, entries and pages of the youngest documents, each at its number's place.
    std::array<StoredDocument, keptPages> m_youngest;
};

} // namespace emulator
