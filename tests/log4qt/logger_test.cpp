#include "../host/qtprinters.h"

#include <driverlogger.h>
#include <driverlogtoqt.h>

#include <gtest/gtest.h>
#include <QStringList>
#include <qtlogcategories.h>

namespace {

QStringList lines;

void remember(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    lines.append(
        QStringLiteral("%1 %2 %3").arg(QString::number(type), QLatin1String(context.category), message));
}

class LoggerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        lines.clear();
        driverLogToQt();
        m_previous = qInstallMessageHandler(remember);
    }

    void TearDown() override
    {
        qInstallMessageHandler(m_previous);
        QLoggingCategory::setFilterRules(QString());
    }

    Log4Qt::Logger& logger = *driverLogger(QStringLiteral("spf_1"));

private:
    QtMessageHandler m_previous = nullptr;
};

TEST_F(LoggerTest, HandlerSeesLevelCategoryAndText)
{
    logger.debug(QStringLiteral("Запрос \"1\""));
    logger.info("Команда выполнена");
    // A placeholder within an argument stays as it is.
    logger.warn("Бумага %1", QStringLiteral("%2 %1"));
    logger.error("Отказ: %1", QStringLiteral("нет"));
    EXPECT_EQ(lines,
        (QStringList{QStringLiteral("0 frdriver.spf_1 Запрос \"1\""),
            QStringLiteral("4 frdriver.spf_1 Команда выполнена"),
            QStringLiteral("1 frdriver.spf_1 Бумага %2 %1"), QStringLiteral("2 frdriver.spf_1 Отказ: нет")}));
}

TEST_F(LoggerTest, TraceIsOffUntilARuleTurnsItOn)
{
    const QtLogCategories categories("frdriver.spf_1");
    EXPECT_FALSE(categories.isTraceEnabled());
    logger.trace("-> %1", QStringLiteral("02 50"));
    EXPECT_TRUE(lines.isEmpty());

    QLoggingCategory::setFilterRules(QStringLiteral("*.trace=true"));
    EXPECT_TRUE(categories.isTraceEnabled());
    EXPECT_TRUE(logger.isTraceEnabled());
    logger.trace("-> %1", QStringLiteral("02 50"));
    EXPECT_EQ(lines, QStringList{QStringLiteral("0 frdriver.spf_1.trace -> 02 50")});
}

TEST_F(LoggerTest, ANameHasOneLogger)
{
    EXPECT_EQ(driverLogger(QStringLiteral("spf_1")), &logger);
    EXPECT_NE(driverLogger(QStringLiteral("spf_2")), &logger);
    driverLogger(QString())->info("root");
    EXPECT_EQ(lines, QStringList{QStringLiteral("4 frdriver root")});
}

} // namespace
