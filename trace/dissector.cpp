#include "trace/dissector.h"

#include "trace/codepage.h"
#include "trace/commandtable.h"
#include "trace/tagtable.h"

#include <QFile>
#include <QStringList>

namespace trace {

namespace {

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// Whole rows, each on a line of its own.
QString table(const char* name, const QStringList& rows)
{
    QString text = QStringLiteral("local %1 = {\n").arg(QLatin1String(name));
    for (const QString& row : rows)
        text += QStringLiteral("    %1,\n").arg(row);
    return text + QStringLiteral("}\n\n");
}

QString fieldList(const QList<FieldRow>& fields)
{
    QStringList rows;
    for (const FieldRow& field : fields)
        rows.append(
            QStringLiteral("{name = %1%2}")
                .arg(quoted(field.name), field.isUtf8 ? QStringLiteral(", isUtf8 = true") : QString()));
    return QStringLiteral("{%1}").arg(rows.join(QStringLiteral(", ")));
}

QString hexRow(const HexCommandRow& row)
{
    const QString question = row.question
        ? QStringLiteral(", question = %1").arg(quoted(QString::fromLatin1(*row.question)))
        : QString();
    return QStringLiteral("{code = %1%2, name = %3, request = %4, answer = %5}")
        .arg(quoted(QString::fromLatin1(row.code)), question, quoted(row.command.name),
            fieldList(row.command.requestFields), fieldList(row.command.answerFields));
}

QString hexCommandTable()
{
    QStringList rows;
    for (const HexCommandRow& row : commandtable::hexCommands())
        rows.append(hexRow(row));
    return table("hexCommands", rows);
}

QString keyed(int key)
{
    return QString::number(key);
}

QString keyed(const QString& key)
{
    return quoted(key);
}

QString textOf(const CommandRow& command)
{
    return command.name;
}

QString textOf(const QString& text)
{
    return text;
}

template <typename Key, typename Value>
QString table(const char* name, const QMap<Key, Value>& values)
{
    QStringList rows;
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        rows.append(QStringLiteral("[%1] = %2").arg(keyed(value.key()), quoted(textOf(value.value()))));
    return table(name, rows);
}

/// What the bytes above ASCII are.
QString letterTable()
{
    constexpr int first = 0x80;
    constexpr int last = 0xFF;
    QMap<int, QString> letters;
    for (int code = first; code <= last; ++code)
        letters.insert(code, fromCp866(QByteArray(1, static_cast<char>(code))));
    return table("letters", letters);
}

/// In this order: Lua knows what stands before.
constexpr const char* scriptParts[] = {"fields", "texts", "hex", "xml", "frames", "show"};

} // namespace

QByteArray dissector()
{
    const QString tables = hexCommandTable() + table("xmlCommands", commandtable::xmlCommands())
        + table("hexErrors", commandtable::hexErrors()) + table("tagNames", tagtable::names())
        + letterTable();
    QByteArray script = "-- Made by \"frctl trace dissector\".\n\n" + tables.toUtf8();
    for (const char* const part : scriptParts) {
        QFile file(QStringLiteral(":/trace/dissector/%1.lua").arg(QLatin1String(part)));
        file.open(QIODevice::ReadOnly);
        script += file.readAll() + '\n';
    }
    return script;
}

} // namespace trace
