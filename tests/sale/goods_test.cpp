// Marked goods: what the register says of their codes, and whether they were sold before.

#include "identifiedsale.h"
#include "issuefixture.h"
#include "markjudgement.h"
#include "sqlitestore.h"

using namespace sale;

namespace {

TEST_F(Issue, BadMarksEndTheWorkBeforeADocument)
{
    const std::tuple<int, MarkPolicy, bool, int> rows[] = {
        {15, MarkPolicy::Strict, true, 0},
        {5, MarkPolicy::Warn, false, 0},
        {5, MarkPolicy::Any, true, 1},
        {3, MarkPolicy::Warn, true, 1},
        {3, MarkPolicy::Strict, false, 0},
    };
    for (const auto& [mark, policy, isIssued, warnings] : rows) {
        driver.calls.clear();
        driver.markResult = mark;
        const IssueResult result = issueReceipt(driver, receipt, {hexLine, nullptr, policy});
        EXPECT_EQ(result.isIssued(), isIssued) << mark;
        EXPECT_EQ(result.warnings.size(), warnings) << mark;
        if (isIssued)
            continue;
        EXPECT_EQ(driver.calls, noting + " mark clear");
        ASSERT_TRUE(result.failure);
        EXPECT_EQ(result.failure->kind, ErrorKind::Mark);
        EXPECT_EQ(result.failure->path, QStringLiteral("items[1].markingCode"));
        EXPECT_EQ(result.failure->bits, judgeMark(mark).bits);
    }
}

TEST_F(Issue, PieceThatIsSoldTwiceIsNoticed)
{
    SqliteStore journal(QStringLiteral(":memory:"));
    // The pieces' own codes, with other proofs behind them.
    const char* const piece = "010460000000001521ABCDEFGHIJKLM|93dGVz";
    const char* const scannedAgain = "010460000000001521ABCDEFGHIJKLM|93AAAA";
    const char* const other = "010460000000001521ABCDEFGHIJKLN|93dGVz";
    const std::tuple<const char*, bool, const char*, const char*, QString> rows[] = {
        {piece, false, "total", "1", ""},
        {piece, false, "", "2", ""},
        {other, false, "", "A", ""},
        {scannedAgain, false, "total", "B", "document 8"},
        {piece, true, "total", "3", ""},
        {other, false, "total", "4", "document 8"},
        {piece, false, "total", "5", "document 8"},
        // The return, at last.
        {piece, true, "", "3", ""},
        {piece, false, "close connect", "6", ""},
        {piece, false, "", "7", "may have been sold"},
    };
    for (const auto& [code, isReturn, failing, id, words] : rows) {
        driver.failing = failing;
        const QString scanned = QString::fromLatin1(code).replace('|', QChar(0x1D));
        receipt.items[1].position.setMarkingCode(scanned, MarkCommon);
        receipt.document.setDocumentType(isReturn ? hw::fr::CheckSaleReturn : hw::fr::CheckSale);
        IdentifiedSale identified(journal, QString::fromLatin1(id), "{}");
        const IssueResult result = issueReceipt(driver, receipt, {RegisterLine(), &identified});
        ASSERT_EQ(result.warnings.size(), words.isEmpty() ? 0 : 1) << id;
        for (const receipt::Finding& warning : result.warnings)
            EXPECT_TRUE(warning.reason.contains(words)) << warning.reason.toStdString();
    }
}

TEST(MarkJudgement, ReadsTheBits)
{
    using Standing = MarkJudgement::Standing;
    const std::tuple<int, Standing, const char*> rows[] = {
        {0, Standing::Unchecked, "not checked by the fiscal drive, not checked on line"},
        {1, Standing::Bad, "key wrong, not checked on line"},
        {3, Standing::Unchecked, "key right, not checked on line"},
        {4, Standing::Bad, "not checked by the fiscal drive, goods wrong on line"},
        {7, Standing::Bad, "key right, goods wrong on line"},
        {10, Standing::Unchecked, "not checked by the fiscal drive, not checked on line"},
        {12, Standing::Unchecked, "not checked by the fiscal drive, goods right on line"},
        {13, Standing::Bad, "key wrong, goods right on line"},
        {15, Standing::Good, "key right, goods right on line"},
        {19, Standing::Unchecked, "key right, not checked on line, autonomous mode"},
        {-1, Standing::Unchecked, "not checked by the fiscal drive, not checked on line"},
        {33, Standing::Bad, "key wrong, not checked on line"},
        {47, Standing::Unchecked, "key right, goods right on line"},
    };
    for (const auto& [result, standing, bits] : rows) {
        const MarkJudgement judgement = judgeMark(result);
        const QStringList ends = QString::fromLatin1(bits).split(QStringLiteral(", "));
        EXPECT_EQ(judgement.standing, standing) << result;
        ASSERT_EQ(judgement.bits.size(), ends.size()) << result;
        for (qsizetype i = 0; i < ends.size(); ++i)
            EXPECT_TRUE(judgement.bits.at(i).endsWith(ends.at(i))) << judgement.bits.at(i).toStdString();
    }
}

} // namespace
