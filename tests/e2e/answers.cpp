#include "answers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

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

// One start of the interpreter for all of them.
void Answers::TearDown()
{
    if (collected.isEmpty())
        return;
    QProcess checker;
    checker.setProcessChannelMode(QProcess::MergedChannels);
    checker.start("/usr/bin/python3",
        {FRSPF_SOURCES "/tests/e2e/answers.py", FRSPF_SOURCES "/docs/output.schema.json"});
    checker.write(collected);
    checker.closeWriteChannel();
    EXPECT_TRUE(checker.waitForFinished());
    EXPECT_EQ(checker.exitCode(), 0) << checker.readAll().constData();
}
