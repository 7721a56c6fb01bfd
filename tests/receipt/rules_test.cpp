#include "taxnumber.h"

#include <QString>

#include <gtest/gtest.h>

using namespace receipt;

namespace {

TEST(TaxNumber, CheckDigitsAreWeighed)
{
    const std::pair<const char*, bool> rows[]
        = {{"7721000017", true}, {"7721000018", false}, {"7712000017", false}, {"772100000040", true},
            {"772100000041", false}, {"772100000050", false}, {"000000000000", true}, {"772100001", false},
            {"77210000170", false}, {"", false}, {"772100001٧", false}};
    for (const auto& [number, isRight] : rows)
        EXPECT_EQ(isInn(QString::fromUtf8(number)), isRight) << number;
}

} // namespace
