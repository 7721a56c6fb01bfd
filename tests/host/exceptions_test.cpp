#include "qtprinters.h"

#include <exceptions.h>

#include <gtest/gtest.h>

namespace {

const QString Message = QStringLiteral("Нет бумаги");

template <typename T>
QString nameIf(const BasicException& exception, const char* name)
{
    return dynamic_cast<const T*>(&exception) != nullptr ? QLatin1String(name) + QLatin1Char(' ') : QString();
}

/// The classes under which a host could have caught the exception.
QString catchableAs(const BasicException& exception)
{
    return nameIf<ComDriverTimeoutException>(exception, "timeout")
        + nameIf<FrWaitForPaperException>(exception, "wait") + nameIf<FrPaperException>(exception, "paper")
        + nameIf<FrNoConnectionException>(exception, "connection")
        + nameIf<FrShiftTooLongException>(exception, "shift") + nameIf<FrFatalException>(exception, "fatal")
        + nameIf<FrCommandException>(exception, "command") + nameIf<FrDriverException>(exception, "register")
        + nameIf<ComDriverException>(exception, "com") + nameIf<DriverException>(exception, "driver");
}

template <typename T>
void expectCaught(const char* names)
{
    try {
        throw T(Message);
    } catch (const BasicException& exception) {
        EXPECT_EQ(catchableAs(exception), QLatin1String(names));
        EXPECT_EQ(exception.tr().ru(), Message);
        EXPECT_EQ(QString::fromUtf8(exception.what()), Message);
    }
}

TEST(Exceptions, EachIsCaughtAsItsParentsAndCarriesTheMessage)
{
    expectCaught<BasicException>("");
    expectCaught<DriverException>("driver ");
    expectCaught<ComDriverException>("com driver ");
    expectCaught<ComDriverTimeoutException>("timeout com driver ");
    expectCaught<FrDriverException>("register driver ");
    expectCaught<FrCommandException>("command register driver ");
    expectCaught<FrNoConnectionException>("connection command register driver ");
    expectCaught<FrPaperException>("paper command register driver ");
    expectCaught<FrWaitForPaperException>("wait paper command register driver ");
    expectCaught<FrShiftTooLongException>("shift command register driver ");
    expectCaught<FrFatalException>("fatal command register driver ");
}

} // namespace
