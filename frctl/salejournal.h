#pragma once

#include "outcome.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

class QSqlQuery;

namespace frctl {

/// A sale with an id, as the journal keeps it.
struct SaleRecord
{
    QString id;
    /// Fingerprint of the receipt.
    QByteArray receipt;
    /// Issued, NotIssued or Unknown; None while the sale is under way, or when the program ended before it
    /// knew.
    DocumentVerdict verdict;
    DriveMark before;
};

/// The journal of sales on disk. A sale is written down before its document is opened and again when its
/// outcome is known, each time to the disk itself, so that neither a killed program nor a power cut forgets
/// it. All operations throw HostError when the file cannot be read or written.
class SaleJournal
{
public:
    /// Makes file and folder where they are missing.
    explicit SaleJournal(const QString& fileName);
    ~SaleJournal();
    SaleJournal(const SaleJournal&) = delete;
    SaleJournal& operator=(const SaleJournal&) = delete;

    /// In the user's folder for data.
    static QString defaultFile();

    std::optional<SaleRecord> find(const QString& id) const;
    /// The sales without an outcome.
    QList<SaleRecord> pending() const;
    /// Only for an id that is new, or whose sale of the same receipt was not issued.
    void begin(const QString& id, const QByteArray& receipt, const DriveMark& before);
    void settle(const QString& id, const DocumentVerdict& verdict);

private:
    void run(QSqlQuery& query) const;
    QList<SaleRecord> select(const QString& condition, const QVariant& value) const;

    QString m_fileName;
    /// Name of the database connection.
    QString m_connection;
};

} // namespace frctl
