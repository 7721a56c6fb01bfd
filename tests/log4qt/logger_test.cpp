#include "../driver/messagelog.h"

#include <driverlogger.h>

#include <gtest/gtest.h>
#include <qtlogcategories.h>

namespace {

using Lines = std::vector<std::string>;

class LoggerTest : public testing::Test
{
protected:
    ~LoggerTest() override { QLoggingCategory::setFilterRules(QString()); }

    const MessageLog log;
    Log4Qt::Logger& logger = *driverLogger(QStringLiteral("spf_1"));
};

TEST_F(LoggerTest, HandlerSeesLevelCategoryAndText)
{
    logger.debug(QStringLiteral("Запрос \"1\""));
    logger.info("Команда выполнена");
    // A placeholder within an argument stays as it is.
    logger.warn("Бумага %1", QStringLiteral("%2 %1"));
    logger.error("Отказ: %1", QStringLiteral("нет"));
    EXPECT_EQ(MessageLog::taken(),
        (Lines{"debug frdriver.spf_1: Запрос \"1\"", "info frdriver.spf_1: Команда выполнена",
            "warn frdriver.spf_1: Бумага %2 %1", "error frdriver.spf_1: Отказ: нет"}));
}

TEST_F(LoggerTest, TraceIsOffUntilARuleTurnsItOn)
{
    const QtLogCategories categories("frdriver.spf_1");
    EXPECT_FALSE(categories.isTraceEnabled());
    logger.trace("-> %1", QStringLiteral("02 50"));
    EXPECT_TRUE(MessageLog::taken().empty());

    QLoggingCategory::setFilterRules(QStringLiteral("*.trace=true"));
    EXPECT_TRUE(categories.isTraceEnabled());
    EXPECT_TRUE(logger.isTraceEnabled());
    logger.trace("-> %1", QStringLiteral("02 50"));
    EXPECT_EQ(MessageLog::taken(), Lines{"debug frdriver.spf_1.trace: -> 02 50"});
}

TEST_F(LoggerTest, ANameHasOneLogger)
{
    EXPECT_EQ(driverLogger(QStringLiteral("spf_1")), &logger);
    EXPECT_NE(driverLogger(QStringLiteral("spf_2")), &logger);
    driverLogger(QString())->info("root");
    EXPECT_EQ(MessageLog::taken(), Lines{"info frdriver: root"});
}

} // namespace
