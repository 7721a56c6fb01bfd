#pragma once

#include "markentry.h"
#include "markrecord.h"
#include "salerecord.h"

#include <QList>
#include <QString>
#include <QVariant>

#include <functional>
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
    /// Writes a sale down as under way, with its marked goods. Only for an id that is new, or whose sale of
    /// the same receipt was not issued.
    void begin(const QString& id, const QByteArray& receipt, const DriveMark& before,
        const MarkEntry& marks = {}, const Movement& ours = {});
    /// Issued, NotIssued or Unknown.
    void settle(const QString& id, const Verdict& verdict);

    /// The same for the marked goods of a receipt without an id: gives a name for settleMarks.
    QString beginMarks(const MarkEntry& marks, const DriveMark& before);
    /// Goods that were not sold are forgotten. Those of an unknown outcome may have been.
    void settleMarks(const QString& sale, const Verdict& verdict);
    /// How the piece was sold, or may have been, unless it was returned since. A sale of the id given does
    /// not count. Also for a code as it was scanned.
    std::optional<MarkRecord> soldMark(const QString& markingCode, const QString& exceptId = {}) const;

private:
    /// Statements that are done together or not at all.
    void together(const std::function<void()>& statements);
    void createTables();
    /// Gives the number of rows that were written.
    int execute(const QString& statement, const QVariantList& values = {});
    void writeMarks(const QString& sale, const QString& id, const MarkEntry& marks, const DriveMark& before);
    void run(QSqlQuery& query) const;
    QList<SaleRecord> select(const QString& condition, const QVariant& value) const;

    QString m_fileName;
    /// Name of the database connection.
    QString m_connection;
};

} // namespace sale
