#include "documentoutput.h"
#include "exceptions.h"
#include "failure.h"
#include "findingsjson.h"
#include "idconflict.h"
#include "identifiedreceipt.h"
#include "identifiedsale.h"
#include "journalerror.h"
#include "markjudgement.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace frctl;
using sale::Outcome;

namespace {

class Answer : public testing::Test
{
protected:
    Answer()
    {
        options.journal = std::make_shared<JournalAccess>(QStringLiteral(":memory:"));
        options.id = "till-1:1";
        options.answer->id = options.id;
    }

    std::optional<Output> asked(const QByteArray& receipt = "{}") const
    {
        return knownAnswer(options, receipt);
    }

    sale::IdentifiedSale begun() const
    {
        sale::IdentifiedSale sale(options.journal->store(), options.id, "{}");
        sale.begin({QStringLiteral("9999"), 7});
        return sale;
    }

    sale::IssueResult settled(const sale::Verdict& verdict, bool isFinal = true) const
    {
        sale::IssueResult result;
        result.id = options.id;
        result.verdict = verdict;
        result.isRepeated = true;
        result.isFinal = isFinal;
        return result;
    }

    Options options;
};

TEST_F(Answer, IsGivenOutOfTheJournalOnce)
{
    EXPECT_FALSE(asked());
    sale::IdentifiedSale first = begun();
    EXPECT_FALSE(asked());
    // It was begun on a drive that is not the one at hand.
    EXPECT_THROW(settledAnswer(options, settled(Outcome::Unknown, false)), RegisterError);
    first.settle({Outcome::Issued, 8});
    EXPECT_EQ(asked()->lines, QStringList{"receipt issued before: document 8"});
    const QJsonObject json = documentOutput(options, *asked()).json;
    EXPECT_EQ(json.value("id"), "till-1:1");
    EXPECT_EQ(json.value("state"), "issued");
    EXPECT_EQ(json.value("replayed"), true);
    EXPECT_EQ(json.value("documentNumber"), 8);
    EXPECT_EQ(json.value("attempts").toArray().size(), 1);
    EXPECT_EQ(asked()->status, ExitSuccess);
    EXPECT_EQ(settledAnswer(options, settled({Outcome::Issued, 8})).status, ExitSuccess) << "another one did";
    options.answer->settledIds = {options.id};
    EXPECT_EQ(settledAnswer(options, settled({Outcome::Issued, 8})).status, ExitIssued);
    EXPECT_THROW(asked(R"({"a": 1})"), sale::IdConflict);
}

TEST_F(Answer, IdHasItsFormButOlderOnesAreFound)
{
    for (const char* const id : {"shop_7.A:1-2", "8letters"})
        EXPECT_NO_THROW((options.id = id, asked())) << id;
    const QString longest(64, 'a');
    EXPECT_NO_THROW((options.id = longest, asked()));
    for (const QString& id : {longest + 'a', QString("7letter"), QString("till-1/2"), QString("касса-12")}) {
        options.id = id;
        EXPECT_THROW(asked(), UsageError) << id.toStdString();
    }
    options.journal->store().accept({options.id, "sell", "{}", {}});
    EXPECT_NO_THROW(asked());
}

TEST_F(Answer, UnknownSaleIsNotRepeated)
{
    begun().settle(Outcome::Unknown);
    try {
        static_cast<void>(asked());
        FAIL();
    } catch (const RegisterError& error) {
        EXPECT_EQ(error.verdict(), Outcome::Unknown);
        EXPECT_EQ(exitStatusOf(error.verdict().outcome), ExitUnknown);
    }
}

TEST(ReceiptOutput, SaysTheSameToPeopleAndMachines)
{
    sale::IssueResult result;
    result.verdict = {Outcome::Issued, 8};
    result.total = 1050;
    result.paid = 1100;
    result.change = 50;
    result.marks = {{QStringLiteral("01\x1D"
                                    "93"),
        15, "items[0].markingCode"}};
    receipt::Receipt receipt;
    receipt.items.resize(2);
    receipt.items[0].path = "items[0]";
    receipt.items[0].position = FrPosition("Молоко", 5.35, 2);
    receipt.items[0].position.setDiscsum(0.2);
    receipt.items[0].position.setMarkingCode(result.marks.constFirst().markingCode, MarkCommon);
    receipt.items[1].kind = receipt::ReceiptItem::Text;
    Options options;
    describeReceipt(*options.answer, receipt, result.marks);
    options.answer->total = result.total;
    options.answer->change = result.change;
    const Output output = documentOutput(options, receiptOutput(result));
    EXPECT_EQ(output.lines.first(2),
        (QStringList{"receipt issued: total 10.50, paid 11.00, change 0.50, document 8",
            "marking code 01<GS>93: 15"}));
    for (const char* const line : {"state: issued", "replayed: no", "documentNumber: 8", "total: 10.50",
             "items: Молоко, 5.25 x 2 = 10.50"})
        EXPECT_TRUE(output.lines.contains(QString(line))) << line;
    EXPECT_FALSE(output.lines.join('\n').contains("error:")) << "what is not told has no line";
    const QJsonObject mark{{"code", result.marks.constFirst().markingCode}, {"result", 15},
        {"bits", QJsonArray::fromStringList(sale::judgeMark(15).bits)}};
    EXPECT_EQ(output.json.value("items"),
        QJsonValue(QJsonArray{QJsonObject{{"path", "items[0]"}, {"name", "Молоко"}, {"price", 5.25},
            {"quantity", 2}, {"amount", 10.5}, {"mark", mark}}}));
}

TEST(FindingsJson, HasTheTextItselfWhichPeopleGetReadable)
{
    const receipt::Finding finding{receipt::Finding::Error, "items[0].markingCode",
        QStringLiteral("01\x1D"
                       "93"),
        "is bad"};
    EXPECT_EQ(QJsonDocument(sale::findingsJson({finding})).toJson(QJsonDocument::Compact),
        R"([{"given":"01\u001d93","path":"items[0].markingCode","text":"is bad"}])");
    EXPECT_EQ(finding.text(), QStringLiteral("items[0].markingCode: \"01<GS>93\" is bad"));
}

TEST(ThrowFailure, NamesTheSideThatFailed)
{
    const auto failureOf = [](auto exception) {
        try {
            throw exception;
        } catch (...) {
            return sale::currentFailure();
        }
    };
    const sale::Verdict issued(Outcome::Issued, 8);
    const std::pair<sale::Failure, const char*> rows[]
        = {{failureOf(FrWaitForPaperException(QStringLiteral("Нет бумаги"))), "FrWaitForPaperException"},
            {failureOf(sale::JournalError(QStringLiteral("full"))), "HostError"}};
    for (const auto& [failure, name] : rows) {
        try {
            throwFailure(failure, issued);
        } catch (const RegisterError& error) {
            EXPECT_EQ(error.exceptionName(), QLatin1String(name));
            EXPECT_EQ(error.what(), failure.text.toStdString());
            EXPECT_EQ(error.verdict(), issued);
        }
    }
    try {
        throwFailure(failureOf(Interrupted()), issued);
    } catch (const Interrupted& interrupted) {
        EXPECT_EQ(interrupted.verdict(), issued);
        EXPECT_FALSE(interrupted.isNotOpened());
    }
    try {
        throwFailure(failureOf(Interrupted()), Outcome::None);
    } catch (const Interrupted& interrupted) {
        EXPECT_TRUE(interrupted.isNotOpened());
    }
    EXPECT_THROW(throwFailure(failureOf(std::bad_alloc()), issued), std::bad_alloc);
}

} // namespace
