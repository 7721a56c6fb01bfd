#include "memory/migrations.h"

#include "memory/database.h"
#include "memory/memoryerror.h"
#include "memory/rowdigest.h"
#include "register/entrytags.h"
#include "register/tlv.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSqlQuery>

#include <iterator>

namespace emulator::migrations {

namespace {

using Step = void (*)(const Database& database);

// Parts of the register, and the documents of its fiscal drive; but for names and numbers all is JSON.
void makeTables(const Database& database)
{
    database.execute(QStringLiteral("CREATE TABLE parts (name TEXT PRIMARY KEY, content TEXT NOT NULL)"));
    database.execute(
        QStringLiteral("CREATE TABLE documents (number INTEGER PRIMARY KEY, record TEXT NOT NULL, "
                       "entry TEXT NOT NULL, page TEXT NOT NULL)"));
}

// The drive tells how many documents it has, so that the loss of the last ones shows.
void countDocuments(const Database& database)
{
    const QString name = QStringLiteral("drive");
    QSqlQuery row = database.execute(QStringLiteral("SELECT content FROM parts WHERE name = ?"), {name});
    // A state that was made and nothing more.
    if (!row.next())
        return;
    QJsonObject drive = QJsonDocument::fromJson(row.value(0).toByteArray()).object();
    drive[QStringLiteral("documents")] = database.number(QStringLiteral("SELECT count(*) FROM documents"));
    database.execute(QStringLiteral("UPDATE parts SET content = ? WHERE name = ?"),
        {QString::fromUtf8(QJsonDocument(drive).toJson(QJsonDocument::Compact)), name});
}

void addPartDigests(const Database& database)
{
    QSqlQuery rows = database.execute(QStringLiteral("SELECT name, content FROM parts"));
    while (rows.next())
        database.execute(QStringLiteral("UPDATE parts SET digest = ? WHERE name = ?"),
            {QString::fromLatin1(rowDigest(rows.value(0).toString(), rows.value(1).toByteArray())),
                rows.value(0)});
}

void addDocumentDigests(const Database& database)
{
    QSqlQuery rows = database.execute(QStringLiteral("SELECT number, record, entry, page FROM documents"));
    while (rows.next()) {
        const DocumentRow row{rows.value(0).toUInt(), rows.value(1).toByteArray(),
            rows.value(2).toByteArray(), rows.value(3).toByteArray()};
        database.execute(QStringLiteral("UPDATE documents SET digest = ? WHERE number = ?"),
            {QString::fromLatin1(rowDigest(row)), row.number});
    }
}

// Each row shows whether it is what was written.
void addDigests(const Database& database)
{
    countDocuments(database);
    for (const char* const table : {"parts", "documents"})
        database.execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN digest TEXT NOT NULL DEFAULT ''")
                             .arg(QLatin1String(table)));
    addPartDigests(database);
    addDocumentDigests(database);
}

// Documents have tags. What those of older versions say stands in their entries; reports of registration had
// none.
void addTags(const Database& database)
{
    QSqlQuery rows = database.execute(QStringLiteral("SELECT number, record, entry FROM documents"));
    while (rows.next()) {
        QJsonObject record = QJsonDocument::fromJson(rows.value(1).toByteArray()).object();
        const QJsonObject entry = QJsonDocument::fromJson(rows.value(2).toByteArray()).object();
        const QByteArray tags = entry.isEmpty() ? QByteArray() : tlv::encode(entrytags::toTags(entry));
        record[QStringLiteral("tags")] = QString::fromLatin1(tags.toBase64());
        database.execute(QStringLiteral("UPDATE documents SET record = ? WHERE number = ?"),
            {QString::fromUtf8(QJsonDocument(record).toJson(QJsonDocument::Compact)), rows.value(0)});
    }
    addDocumentDigests(database);
}

// What waits for paper tells which document it is of. A row that is not what was written stays so.
void nameWaitingPages(const Database& database)
{
    const QString name = QStringLiteral("paper");
    const QString waiting = QStringLiteral("waiting");
    QSqlQuery row
        = database.execute(QStringLiteral("SELECT content, digest FROM parts WHERE name = ?"), {name});
    if (!row.next() || row.value(1).toByteArray() != rowDigest(name, row.value(0).toByteArray()))
        return;
    QJsonObject paper = QJsonDocument::fromJson(row.value(0).toByteArray()).object();
    QJsonArray named;
    for (const QJsonValue page : paper.value(waiting).toArray())
        named.append(QJsonObject{{QStringLiteral("document"), 0}, {QStringLiteral("page"), page}});
    paper[waiting] = named;
    const QByteArray content = QJsonDocument(paper).toJson(QJsonDocument::Compact);
    database.execute(QStringLiteral("UPDATE parts SET content = ?, digest = ? WHERE name = ?"),
        {QString::fromUtf8(content), QString::fromLatin1(rowDigest(name, content)), name});
}

// The step to version 1 stands first.
constexpr Step steps[] = {makeTables, addDigests, addTags, nameWaitingPages};

} // namespace

int newestVersion()
{
    return static_cast<int>(std::size(steps));
}

void makeVersion(int version, const Database& database)
{
    steps[version - 1](database);
}

} // namespace emulator::migrations
