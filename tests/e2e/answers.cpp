#include "answers.h"

#include "schemacheck.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QByteArray collected;

} // namespace

void Answers::collect(const QStringList& arguments, const QByteArray& output)
{
    for (const QByteArray& line : output.split('\n')) {
        if (line.isEmpty())
            continue;
        const QJsonObject entry{{"command", QJsonArray::fromStringList(arguments)},
            {"answer", QJsonDocument::fromJson(line).object()}};
        collected += QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n';
    }
}

void Answers::TearDown()
{
    const QByteArray findings = collected.isEmpty()
        ? QByteArray()
        : schemaFindings("e2e/answers.py", {"output.schema.json"}, collected);
    EXPECT_EQ(findings.toStdString(), "");
}
