#include "memory/statestore.h"

#include "memory/memoryerror.h"
#include "memory/migrations.h"
#include "memory/rowdigest.h"

#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>

namespace emulator {

namespace {

// "SPFE": tells the file of a state from any other database.
constexpr int applicationId = 0x53504645;

const QString& checkedName(const QString& fileName, Database::Access access)
{
    const bool exists = QFile::exists(fileName);
    const QFileInfo folder(QFileInfo(fileName).path());
    if (!exists && folder.isDir() && !folder.isExecutable())
        throw MemoryError(QStringLiteral("this user may not enter the folder"));
    if (!exists && access == Database::Access::ReadOnly)
        throw MemoryError(QStringLiteral("there is none"));
    // What has not come from the log into the file yet would be lost without a word.
    if (!exists && QFile::exists(fileName + QStringLiteral("-wal")))
        throw MemoryError(QStringLiteral("damaged: the file is gone, its log is there"));
    // A state comes into its folder as a whole.
    if (exists && QFileInfo(fileName).size() == 0)
        throw MemoryError(QStringLiteral("damaged: the file is empty"));
    return fileName;
}

void checkDigest(const QByteArray& found, const QByteArray& wanted, const QString& what)
{
    if (found != wanted)
        throw MemoryError(QStringLiteral("damaged: %1 is not what was written").arg(what));
}

} // namespace

StateStore::StateStore(const QString& fileName, Database::Access access)
    : m_database(checkedName(fileName, access), access)
{
    const int version = checkedVersion();
    if (access == Database::Access::ReadWrite)
        makeReady(version);
    else if (version != migrations::newestVersion())
        throw MemoryError(
            QStringLiteral("of an older spf-emulator; it has to be started with this one once"));
}

int StateStore::checkedVersion() const
{
    const int id = m_database.number(QStringLiteral("PRAGMA application_id"));
    const int version = m_database.number(QStringLiteral("PRAGMA user_version"));
    const bool isEmpty = m_database.number(QStringLiteral("SELECT count(*) FROM sqlite_master")) == 0;
    if (isEmpty && id == 0 && version == 0)
        return 0;
    if (id != applicationId || version < 1)
        throw MemoryError(QStringLiteral("the database of another program"));
    if (version > migrations::newestVersion())
        throw MemoryError(
            QStringLiteral("made by a newer spf-emulator: its format has version %1, this one knows up to %2")
                .arg(version)
                .arg(migrations::newestVersion()));
    QSqlQuery faults = m_database.execute(QStringLiteral("PRAGMA quick_check(1)"));
    if (!faults.next() || faults.value(0).toString() != QStringLiteral("ok"))
        throw MemoryError(QStringLiteral("damaged: ") + faults.value(0).toString());
    return version;
}

void StateStore::makeReady(int version)
{
    m_database.execute(QStringLiteral("PRAGMA journal_mode = WAL"));
    m_database.execute(QStringLiteral("PRAGMA synchronous = FULL"));
    for (int next = version + 1; next <= migrations::newestVersion(); ++next) {
        m_database.together([this, next] {
            migrations::makeVersion(next, m_database);
            m_database.execute(QStringLiteral("PRAGMA application_id = %1").arg(applicationId));
            m_database.execute(QStringLiteral("PRAGMA user_version = %1").arg(next));
        });
    }
}

QMap<QString, QByteArray> StateStore::parts() const
{
    QMap<QString, QByteArray> result;
    QSqlQuery rows = m_database.execute(QStringLiteral("SELECT name, content, digest FROM parts"));
    while (rows.next()) {
        const QString name = rows.value(0).toString();
        const QByteArray content = rows.value(1).toByteArray();
        checkDigest(rows.value(2).toByteArray(), rowDigest(name, content), name);
        result[name] = content;
    }
    return result;
}

QList<DocumentRow> StateStore::documents() const
{
    QList<DocumentRow> result;
    QSqlQuery rows = m_database.execute(
        QStringLiteral("SELECT number, record, entry, page, digest FROM documents ORDER BY number"));
    while (rows.next()) {
        const DocumentRow row{rows.value(0).toUInt(), rows.value(1).toByteArray(),
            rows.value(2).toByteArray(), rows.value(3).toByteArray()};
        checkDigest(
            rows.value(4).toByteArray(), rowDigest(row), QStringLiteral("document %1").arg(row.number));
        result.append(row);
    }
    return result;
}

quint32 StateStore::lastDocument() const
{
    return static_cast<quint32>(m_database.number(QStringLiteral("SELECT max(number) FROM documents")));
}

void StateStore::write(const StateChange& change)
{
    m_database.together([this, &change] {
        for (auto part = change.parts.cbegin(); part != change.parts.cend(); ++part)
            m_database.execute(
                QStringLiteral("INSERT OR REPLACE INTO parts (name, content, digest) VALUES (?, ?, ?)"),
                {part.key(), QString::fromUtf8(part.value()),
                    QString::fromLatin1(rowDigest(part.key(), part.value()))});
        for (const QString& name : change.gone)
            m_database.execute(QStringLiteral("DELETE FROM parts WHERE name = ?"), {name});
        for (const DocumentRow& row : change.documents)
            m_database.execute(
                QStringLiteral(
                    "INSERT INTO documents (number, record, entry, page, digest) VALUES (?, ?, ?, ?, ?)"),
                {row.number, QString::fromUtf8(row.record), QString::fromUtf8(row.entry),
                    QString::fromUtf8(row.page), QString::fromLatin1(rowDigest(row))});
    });
}

void StateStore::copyTo(const QString& fileName) const
{
    m_database.execute(QStringLiteral("VACUUM INTO ?"), {fileName});
}

} // namespace emulator
