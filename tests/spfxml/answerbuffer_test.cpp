#include "spfxml/answerbuffer.h"

#include <gtest/gtest.h>

using spfxml::AnswerBuffer;

namespace {

const QByteArray answer = "<ArmResponse><id>{7}</id></ArmResponse>";

TEST(AnswerBuffer, findsMarkAndIdHoweverTheyAreSplit)
{
    for (qsizetype size = 1; size <= answer.size(); ++size) {
        AnswerBuffer buffer("{7}");
        qsizetype taken = 0;
        bool isComplete = false;
        while (!isComplete && taken < answer.size()) {
            isComplete = buffer.append(answer.mid(taken, size));
            taken += size;
            ASSERT_EQ(isComplete, taken >= answer.size()) << "portions of " << size << " at " << taken;
        }
        EXPECT_EQ(buffer.trimmed(), answer);
    }
}

TEST(AnswerBuffer, dropsAForeignAnswerWithAllThatStandsBehindIt)
{
    AnswerBuffer buffer("{7}");
    EXPECT_FALSE(buffer.append("<ArmResponse>{6}</ArmResponse> <ArmResp"));
    EXPECT_EQ(buffer.size(), 0);
    EXPECT_FALSE(buffer.append("onse>"));
    EXPECT_TRUE(buffer.append(" {7}</ArmResponse>\r\n"));
    EXPECT_EQ(buffer.trimmed(), QByteArray("onse> {7}</ArmResponse>"));
}

} // namespace
