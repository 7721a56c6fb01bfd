#include "apirig.h"
#include "configuration/configuration.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString example = QStringLiteral(FRSPF_SOURCES "/examples/frserver.ini");

/// Also when all is chosen that stands in it as a choice.
TEST(ExampleConfiguration, IsOneWithAllThatItOffers)
{
    EXPECT_EQ("till1", frserver::Configuration::read(example).registers.first().name);
    QFile file(example);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    const QString chosen = QStringLiteral("shift = onSale\n");
    ASSERT_TRUE(text.contains(chosen));
    text.remove(chosen);
    // A file goes without [store].
    text.replace(QRegularExpression(QStringLiteral("^# (?!journal)(\\[?[a-z-]+(?: =|\\]))"),
                     QRegularExpression::MultilineOption),
        QStringLiteral("\\1"));
    const QTemporaryDir folder;
    QFile whole(folder.filePath("frserver.ini"));
    ASSERT_TRUE(whole.open(QIODevice::WriteOnly));
    whole.write(text.toUtf8());
    whole.close();
    EXPECT_NE("", frserver::Configuration::read(whole.fileName()).service.webhookUrl);
}

using ExampleAlerts = ApiTest;

TEST_F(ExampleAlerts, AskForWhatIsTold)
{
    QFile rules(QStringLiteral(FRSPF_SOURCES "/examples/frserver.rules.yml"));
    ASSERT_TRUE(rules.open(QIODevice::ReadOnly));
    const QByteArray told = ask("GET", "/metrics").body;
    static const QRegularExpression series(
        QStringLiteral("(?:expr: |increase\\(|rate\\()(frserver_[a-z_]+)(?:\\{([a-z]+))?"));
    QRegularExpressionMatchIterator asked = series.globalMatch(QString::fromUtf8(rules.readAll()));
    EXPECT_TRUE(asked.hasNext());
    while (asked.hasNext()) {
        const QRegularExpressionMatch one = asked.next();
        const QRegularExpression line(
            QStringLiteral("^%1\\{[^}]*\\b%2").arg(one.captured(1), one.captured(2)),
            QRegularExpression::MultilineOption);
        EXPECT_TRUE(line.match(QString::fromUtf8(told)).hasMatch()) << qPrintable(one.captured());
    }
}

} // namespace
