#include "qtprinters.h"

#include <exceptions.h>

#include <gtest/gtest.h>

namespace {

const QString Message = QStringLiteral("Нет бумаги");

template <typename Type, typename... Parents>
void expectCaught()
{
    static_assert((std::is_base_of_v<Parents, Type> && ...));
    try {
        throw Type(Message);
    } catch (const BasicException& exception) {
        EXPECT_EQ(exception.tr().ru(), Message);
        EXPECT_EQ(QString::fromUtf8(exception.what()), Message);
    }
}

TEST(Exceptions, EachIsCaughtAsItsParentsAndCarriesTheMessage)
{
    expectCaught<ComDriverTimeoutException, ComDriverException, DriverException>();
    expectCaught<FrNoConnectionException, FrCommandException, FrDriverException, DriverException>();
    expectCaught<FrWaitForPaperException, FrPaperException, FrCommandException>();
    expectCaught<FrShiftTooLongException, FrCommandException>();
    expectCaught<FrFatalException, FrCommandException>();
    // A host must not take one of these for another.
    static_assert(!std::is_base_of_v<ComDriverException, FrNoConnectionException>);
    static_assert(!std::is_base_of_v<FrPaperException, FrFatalException>);
}

} // namespace
