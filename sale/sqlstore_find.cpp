#include "sqlstore.h"

#include "storedtime.h"

#include <QJsonDocument>
#include <QSqlQuery>

#include <algorithm>
#include <array>

namespace sale {

namespace {

constexpr std::array openStates{DocumentState::Queued, DocumentState::Running, DocumentState::Unknown};

/// The condition grows with the fields that are given.
class Selection
{
public:
    void add(const QString& text, const QVariant& value)
    {
        m_texts.append(text);
        m_values.append(value);
    }

    void add(const SqlKey& key)
    {
        for (qsizetype column = 0; column < key.columns.size(); ++column)
            add(QStringLiteral("documents.%1 = ?").arg(key.columns.at(column)), key.values.at(column));
    }

    void addStates(const QList<DocumentState>& states)
    {
        // Only with the words of its index few rows are looked at, which each start of a program waits for.
        const bool areOpen = std::none_of(states.cbegin(), states.cend(), isFinal);
        if (areOpen)
            m_texts.append(QStringLiteral("state IN ('queued', 'running', 'unknown')"));
        // Saying it twice would make the database expect fewer rows, and sort them all.
        const auto isAsked = [&states](DocumentState state) { return states.contains(state); };
        if (areOpen && std::all_of(openStates.cbegin(), openStates.cend(), isAsked))
            return;
        QStringList places;
        for (const DocumentState state : states) {
            places.append(QStringLiteral("?"));
            m_values.append(stateName(state));
        }
        m_texts.append(QStringLiteral("state IN (%1)").arg(places.join(QLatin1Char(','))));
    }

    QString text() const
    {
        return m_texts.isEmpty() ? QString()
                                 : QStringLiteral(" WHERE ") + m_texts.join(QStringLiteral(" AND "));
    }
    const QVariantList& values() const { return m_values; }

private:
    QStringList m_texts;
    QVariantList m_values;
};

Selection selectionOf(const DocumentQuery& query, const QString& textCondition)
{
    Selection condition;
    // The join stands first, so its value does too.
    if (!query.goods.isEmpty())
        condition.add(QStringLiteral("goods.mark = ?"), query.goods);
    if (!query.states.isEmpty())
        condition.addStates(query.states);
    if (!query.registerName.isEmpty())
        condition.add(QStringLiteral("register = ?"), query.registerName);
    if (!query.pool.isEmpty())
        condition.add(QStringLiteral("pool = ?"), query.pool);
    if (!query.drive.isEmpty())
        condition.add(QStringLiteral("drive = ?"), query.drive);
    if (query.documentNumber != 0)
        condition.add(QStringLiteral("document = ?"), qint64{query.documentNumber});
    if (query.since.isValid())
        condition.add(QStringLiteral("documents.accepted >= ?"), storedTime(query.since));
    if (query.order == DocumentQuery::LastBegun)
        condition.add(QStringLiteral("last_attempt > ?"), 0);
    if (!query.returnOf.isEmpty())
        condition.add(QStringLiteral("return_of = ?"), query.returnOf);
    if (!query.text.isEmpty())
        condition.add(textCondition, query.text);
    if (query.after != 0)
        condition.add(QStringLiteral("documents.sequence > ?"), query.after);
    if (query.before != 0)
        condition.add(QStringLiteral("documents.sequence < ?"), query.before);
    return condition;
}

QString orderOf(const DocumentQuery& query)
{
    if (!query.goods.isEmpty())
        return QStringLiteral("goods.sequence DESC");
    switch (query.order) {
    case DocumentQuery::Newest:
        return QStringLiteral("documents.sequence DESC");
    case DocumentQuery::LastBegun:
        return QStringLiteral("last_attempt DESC");
    default:
        return QStringLiteral("documents.sequence");
    }
}

StoredDocument documentOf(const QSqlQuery& row)
{
    int column = 0;
    const auto text = [&] { return row.value(column++).toString(); };
    const auto number = [&] { return row.value(column++).toLongLong(); };
    StoredDocument document;
    document.sequence = number();
    document.request.id = text();
    document.request.kind = text();
    document.request.body = text().toUtf8();
    document.request.registerName = text();
    document.request.startBefore = timeFromStored(text());
    document.digest = text().toLatin1();
    document.state = stateOf(text()).value_or(DocumentState::Unknown);
    document.reason = reasonOf(text());
    document.accepted = timeFromStored(text());
    document.begun = timeFromStored(text());
    document.settled = timeFromStored(text());
    document.drive = text();
    document.documentNumber = static_cast<quint32>(number());
    document.isNumberRead = number() != 0;
    document.times = static_cast<int>(number());
    document.resolvedBy = text();
    document.resolvedNote = text();
    document.attemptCount = static_cast<int>(number());
    document.queued = timeFromStored(text());
    document.request.returnOf = text();
    document.request.pool = text();
    document.request.isPaperless = row.value(column).toBool();
    return document;
}

StoredAttempt attemptOf(const QSqlQuery& row)
{
    int column = 0;
    const auto text = [&] { return row.value(column++).toString(); };
    const auto json = [&] { return QJsonDocument::fromJson(row.value(column++).toByteArray()); };
    StoredAttempt attempt;
    attempt.number = row.value(column++).toInt();
    attempt.begun = timeFromStored(text());
    attempt.ended = timeFromStored(text());
    attempt.start.markBefore = json().object();
    attempt.start.movement = json().object();
    attempt.note.markAfter = json().object();
    attempt.note.failure = json().object();
    attempt.note.warnings = json().array();
    attempt.verdict = stateOf(text());
    attempt.documentNumber = row.value(column++).toUInt();
    attempt.body = text().toUtf8();
    attempt.digest = text().toLatin1();
    attempt.start.marks = json().array();
    attempt.registerTime = QDateTime::fromString(text(), Qt::ISODate);
    return attempt;
}

} // namespace

QString SqlStore::wordsOf(const DocumentQuery& query, const QString& condition) const
{
    QString text;
    if (!query.goods.isEmpty())
        text += QStringLiteral(" JOIN goods ON ") + goodsJoin();
    text += condition;
    if (!query.id.isEmpty())
        return text;
    text += QStringLiteral(" ORDER BY ") + orderOf(query);
    return query.limit == 0 ? text : text + QStringLiteral(" LIMIT %1").arg(query.limit);
}

QString SqlStore::columns(const DocumentQuery& query) const
{
    const QString none = QStringLiteral("''");
    const auto moment = [&](const QString& column) { return query.withTimes ? m_sql.moment(column) : none; };
    return QStringLiteral("documents.sequence, documents.id, kind, %6, register, %1, digest, state, reason, "
                          "%2, %3, %4, drive, document, number_read, times, resolved_by, resolved_note, "
                          "attempts, %5, return_of, pool, paperless")
        .arg(moment(QStringLiteral("start_before")), moment(QStringLiteral("documents.accepted")),
            moment(QStringLiteral("begun")), moment(QStringLiteral("settled")),
            m_sql.moment(QStringLiteral("coalesce(queued, documents.accepted)")),
            query.withBodies ? QStringLiteral("body") : none);
}

QList<StoredDocument> SqlStore::documents(const QString& statement, const QVariantList& values) const
{
    QList<StoredDocument> found;
    m_sql.select(statement, values, [&found](const QSqlQuery& row) { found.append(documentOf(row)); });
    return found;
}

std::optional<StoredDocument> SqlStore::documentAt(const SqlKey& key, const QString& words) const
{
    if (key.columns.isEmpty())
        return std::nullopt;
    const QList<StoredDocument> found = documents(
        QStringLiteral("SELECT %1 FROM documents WHERE %2").arg(columns(), key.condition()) + words,
        key.values);
    return found.isEmpty() ? std::nullopt : std::optional(found.constFirst());
}

QList<StoredDocument> SqlStore::find(const DocumentQuery& query) const
{
    Selection condition = selectionOf(query, textCondition());
    if (!query.id.isEmpty()) {
        const SqlKey key = keyOf(query.id);
        if (key.columns.isEmpty())
            return {};
        condition.add(key);
    }
    const QString statement
        = QStringLiteral("SELECT %1 FROM documents").arg(columns(query)) + wordsOf(query, condition.text());
    QList<StoredDocument> found;
    const auto take = [&found](const QSqlQuery& row) { found.append(documentOf(row)); };
    // These come with each document and have one way to it. What else is there goes by the values: in a long
    // queue of a pool the first one of a register is found by the register, and not by the queue.
    const bool isOfEach
        = !query.id.isEmpty() || (query.limit == 1 && query.order == DocumentQuery::LastBegun);
    isOfEach ? m_sql.select(statement, condition.values(), take)
             : m_sql.search(statement, condition.values(), take);
    if (query.withAttempts) {
        for (StoredDocument& document : found) {
            // One that waits is looked at several times before it is begun.
            if (document.attemptCount > 0)
                addAttempts(document);
        }
    }
    return found;
}

void SqlStore::addAttempts(StoredDocument& document) const
{
    const SqlKey key = keyOf(document);
    m_sql.select(
        QStringLiteral(
            "SELECT number, %1, %2, mark_before, movement, mark_after, failure, warnings, "
            "verdict, document, body, digest, marks, register_time FROM attempts WHERE %3 ORDER BY number")
            .arg(m_sql.moment(QStringLiteral("begun")), m_sql.moment(QStringLiteral("ended")),
                key.condition()),
        key.values, [&document](const QSqlQuery& row) { document.attempts.append(attemptOf(row)); });
}

} // namespace sale
