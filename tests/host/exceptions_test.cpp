#include <exceptions.h>

#include <gtest/gtest.h>

namespace {

template <typename Type, typename... Parents>
constexpr bool isCaughtAs = (std::is_base_of_v<Parents, Type> && ...);

TEST(Exceptions, EachIsCaughtAsItsParents)
{
    EXPECT_TRUE((isCaughtAs<ComDriverTimeoutException, ComDriverException, DriverException>));
    EXPECT_TRUE(
        (isCaughtAs<FrNoConnectionException, FrCommandException, FrDriverException, DriverException>));
    EXPECT_TRUE((isCaughtAs<FrWaitForPaperException, FrPaperException, FrCommandException>));
    EXPECT_TRUE((isCaughtAs<FrShiftTooLongException, FrCommandException>));
    EXPECT_TRUE((isCaughtAs<FrFatalException, FrCommandException>));
    // A host must not take one of these for another.
    EXPECT_FALSE((isCaughtAs<FrNoConnectionException, ComDriverException>));
    EXPECT_FALSE((isCaughtAs<FrFatalException, FrPaperException>));
}

} // namespace
