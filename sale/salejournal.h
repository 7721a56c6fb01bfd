#pragma once

#include "salerecord.h"

#include <QList>
#include <QString>

#include <optional>

class QSqlQuery;

namespace sale {

/// The journal of sales on disk. A sale is written down before its document is opened and again when its
/// outcome is known, each time to the disk itself, so that neither a killed program nor a power cut forgets
/// it. All operations throw JournalError when the file cannot be read or written.
class SaleJournal
{
public:
    /// Makes file and folder where they are missing.
    explicit SaleJournal(const QString& fileName);
    ~SaleJournal();
    SaleJournal(const SaleJournal&) = delete;
    SaleJournal& operator=(const SaleJournal&) = delete;

    /// Nothing for an id that is new.
    std::optional<SaleRecord> find(const QString& id) const;
    /// The sales without an outcome.
    QList<SaleRecord> pending() const;
    /// Writes a sale down as under way. Only for an id that is new, or whose sale of the same receipt was not
    /// issued.
    void begin(const QString& id, const QByteArray& receipt, const DriveMark& before);
    /// Issued, NotIssued or Unknown.
    void settle(const QString& id, const Verdict& verdict);

private:
    void run(QSqlQuery& query) const;
    QList<SaleRecord> select(const QString& condition, const QVariant& value) const;

    QString m_fileName;
    /// Name of the database connection.
    QString m_connection;
};

} // namespace sale
