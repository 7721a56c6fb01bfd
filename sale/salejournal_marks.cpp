#include "salejournal.h"

#include "marksyntax.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTimeZone>
#include <QUuid>

namespace sale {

QString SaleJournal::beginMarks(const MarkEntry& marks, const DriveMark& before)
{
    const QString sale = QUuid::createUuid().toString();
    together([&] { writeMarks(sale, {}, marks, before); });
    return sale;
}

void SaleJournal::writeMarks(
    const QString& sale, const QString& id, const MarkEntry& marks, const DriveMark& before)
{
    for (const QString& mark : marks.marks)
        execute(QStringLiteral("INSERT INTO marks VALUES (?, ?, ?, ?, 'pending', 0, ?, CURRENT_TIMESTAMP)"),
            {mark, sale, id.isNull() ? QString::fromLatin1("") : id, marks.isReturn, before.drive});
}

void SaleJournal::settleMarks(const QString& sale, const Verdict& verdict)
{
    if (verdict.outcome == Outcome::Unknown)
        return;
    if (verdict.outcome == Outcome::Issued)
        execute(QStringLiteral("UPDATE marks SET outcome = 'issued', document = ?, "
                               "changed = CURRENT_TIMESTAMP WHERE sale = ?"),
            {verdict.number, sale});
    else
        execute(QStringLiteral("DELETE FROM marks WHERE sale = ? AND outcome = 'pending'"), {sale});
}

std::optional<MarkRecord> SaleJournal::soldMark(const QString& markingCode, const QString& exceptId) const
{
    QSqlQuery query(QSqlDatabase::database(m_connection));
    // A return counts when it is known to have been issued.
    query.prepare(QStringLiteral("SELECT returned, id, changed, drive, document FROM marks "
                                 "WHERE mark = ? AND (id = '' OR id <> ?) "
                                 "AND (returned = 0 OR outcome = 'issued') ORDER BY rowid DESC LIMIT 1"));
    query.addBindValue(receipt::markIdentity(markingCode));
    query.addBindValue(exceptId.isNull() ? QString::fromLatin1("") : exceptId);
    run(query);
    if (!query.next() || query.value(0).toBool())
        return std::nullopt;
    QDateTime time = QDateTime::fromString(query.value(2).toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    time.setTimeZone(QTimeZone::utc());
    return MarkRecord{query.value(1).toString(), time, query.value(3).toString(), query.value(4).toUInt()};
}

} // namespace sale
