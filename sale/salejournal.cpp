#include "salejournal.h"

#include "journalerror.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace sale {

namespace {

QString pendingName()
{
    return QStringLiteral("pending");
}

QString storedName(Outcome outcome)
{
    return outcome == Outcome::None ? pendingName() : outcomeName(outcome);
}

Outcome storedOutcome(const QString& name)
{
    if (name == pendingName())
        return Outcome::None;
    for (const Outcome outcome : {Outcome::Issued, Outcome::NotIssued}) {
        if (name == outcomeName(outcome))
            return outcome;
    }
    return Outcome::Unknown;
}

QString compactText(const QJsonObject& json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

QJsonObject storedObject(const QVariant& text)
{
    return QJsonDocument::fromJson(text.toString().toUtf8()).object();
}

DriveMark storedMark(const QSqlQuery& query)
{
    if (query.value(6).isNull())
        return {query.value(4).toString(), query.value(5).toUInt()};
    return DriveMark::fromJson(storedObject(query.value(6)));
}

} // namespace

SaleJournal::SaleJournal(const QString& fileName)
    : m_fileName(fileName)
    , m_connection(QUuid::createUuid().toString())
{
    QDir().mkpath(QFileInfo(fileName).absolutePath());
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    database.setDatabaseName(fileName);
    if (!database.open()) {
        const QString error = database.lastError().text();
        database = {};
        QSqlDatabase::removeDatabase(m_connection);
        throw JournalError(QStringLiteral("journal %1: %2").arg(fileName, error));
    }
    try {
        createTables();
    } catch (const JournalError&) {
        // A constructor that throws has no destructor to close the file.
        database.close();
        database = {};
        QSqlDatabase::removeDatabase(m_connection);
        throw;
    }
}

SaleJournal::~SaleJournal()
{
    QSqlDatabase::database(m_connection).close();
    QSqlDatabase::removeDatabase(m_connection);
}

std::optional<SaleRecord> SaleJournal::find(const QString& id) const
{
    const QList<SaleRecord> found = select(QStringLiteral("id = ?"), id);
    return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
}

QList<SaleRecord> SaleJournal::pending() const
{
    return select(QStringLiteral("outcome = ?"), pendingName());
}

void SaleJournal::begin(const QString& id, const QByteArray& receipt, const DriveMark& before,
    const MarkEntry& marks, const Movement& ours)
{
    together([&] {
        // One statement, so that of two programs with the same id one loses here.
        const int written = execute(
            QStringLiteral(
                "INSERT INTO sales VALUES (?, ?, ?, 0, ?, ?, CURRENT_TIMESTAMP) ON CONFLICT (id) DO UPDATE "
                "SET outcome = excluded.outcome, drive = excluded.drive, "
                "document_before = excluded.document_before, changed = excluded.changed "
                "WHERE outcome = 'notIssued' AND receipt = excluded.receipt"),
            {id, QString::fromLatin1(receipt), pendingName(), before.drive, before.lastDocument});
        if (written != 1)
            throw JournalError(
                QStringLiteral("journal %1: the sale %2 is done or under way").arg(m_fileName, id));
        execute(QStringLiteral("INSERT OR REPLACE INTO witnesses VALUES (?, ?, ?)"),
            {id, compactText(before.toJson()), compactText(ours.toJson())});
        writeMarks(id, id, marks, before);
    });
}

void SaleJournal::settle(const QString& id, const Verdict& verdict)
{
    together([&] {
        execute(QStringLiteral(
                    "UPDATE sales SET outcome = ?, document = ?, changed = CURRENT_TIMESTAMP WHERE id = ?"),
            {storedName(verdict.outcome), verdict.number, id});
        settleMarks(id, verdict);
    });
}

void SaleJournal::together(const std::function<void()>& statements)
{
    execute(QStringLiteral("BEGIN IMMEDIATE"));
    try {
        statements();
        execute(QStringLiteral("COMMIT"));
    } catch (...) {
        QSqlQuery(QSqlDatabase::database(m_connection)).exec(QStringLiteral("ROLLBACK"));
        throw;
    }
}

void SaleJournal::createTables()
{
    execute(QStringLiteral("CREATE TABLE IF NOT EXISTS sales (id TEXT PRIMARY KEY, receipt TEXT NOT NULL, "
                           "outcome TEXT NOT NULL, document INTEGER NOT NULL, drive TEXT NOT NULL, "
                           "document_before INTEGER NOT NULL, changed TEXT NOT NULL)"));
    // What a sale that was broken off is judged by; earlier releases knew drive and number only.
    execute(QStringLiteral("CREATE TABLE IF NOT EXISTS witnesses (sale TEXT PRIMARY KEY, "
                           "before TEXT NOT NULL, ours TEXT NOT NULL)"));
    // Journals of earlier releases have no marks; sale is the id, or a name of its own for a sale without.
    execute(QStringLiteral("CREATE TABLE IF NOT EXISTS marks (mark TEXT NOT NULL, sale TEXT NOT NULL, "
                           "id TEXT NOT NULL, returned INTEGER NOT NULL, outcome TEXT NOT NULL, "
                           "document INTEGER NOT NULL, drive TEXT NOT NULL, changed TEXT NOT NULL)"));
    execute(QStringLiteral("CREATE INDEX IF NOT EXISTS marks_by_mark ON marks (mark)"));
    execute(QStringLiteral("CREATE INDEX IF NOT EXISTS marks_by_sale ON marks (sale)"));
}

int SaleJournal::execute(const QString& statement, const QVariantList& values)
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    // What a preparation fails of is forgotten by an execution after it.
    if (!query.prepare(statement))
        throw JournalError(QStringLiteral("journal %1: %2").arg(m_fileName, query.lastError().text()));
    for (const QVariant& value : values)
        query.addBindValue(value);
    run(query);
    return query.numRowsAffected();
}

void SaleJournal::run(QSqlQuery& query) const
{
    if (!query.exec())
        throw JournalError(QStringLiteral("journal %1: %2").arg(m_fileName, query.lastError().text()));
}

QList<SaleRecord> SaleJournal::select(const QString& condition, const QVariant& value) const
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    query.prepare(QStringLiteral("SELECT id, receipt, outcome, document, drive, document_before, "
                                 "before, ours FROM sales LEFT JOIN witnesses ON sale = id WHERE ")
        + condition);
    query.addBindValue(value);
    run(query);
    QList<SaleRecord> records;
    while (query.next())
        records.append({query.value(0).toString(), query.value(1).toByteArray(),
            {storedOutcome(query.value(2).toString()), query.value(3).toUInt()}, storedMark(query),
            Movement::fromJson(storedObject(query.value(7)))});
    return records;
}

} // namespace sale
