#include "configuration/configuration.h"
#include "configuration/configurationerror.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QString example = QStringLiteral(FRSPF_SOURCES "/examples/frserver.ini");

TEST(ExampleConfiguration, IsOne)
{
    const frserver::Configuration configuration = frserver::Configuration::read(example);
    ASSERT_EQ(1, configuration.registers.size());
    EXPECT_EQ("till1", configuration.registers.first().name);
}

/// What stands in it as a choice can be chosen.
TEST(ExampleConfiguration, IsOneWithAllThatItOffers)
{
    QFile file(example);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    QString text = QString::fromUtf8(file.readAll());
    const QString chosen = QStringLiteral("shift = onSale\n");
    ASSERT_TRUE(text.contains(chosen));
    text.remove(chosen);
    text.replace(
        QRegularExpression(QStringLiteral("^# (\\[?[a-z-]+(?: =|\\]))"), QRegularExpression::MultilineOption),
        QStringLiteral("\\1"));
    const QTemporaryDir folder;
    QFile whole(folder.filePath("frserver.ini"));
    ASSERT_TRUE(whole.open(QIODevice::WriteOnly));
    whole.write(text.toUtf8());
    whole.close();
    try {
        EXPECT_NE("", frserver::Configuration::read(whole.fileName()).service.webhookUrl);
    } catch (const frserver::ConfigurationError& error) {
        FAIL() << error.what();
    }
}

} // namespace
