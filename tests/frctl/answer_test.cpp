#include "documentoutput.h"
#include "exceptions.h"
#include "failure.h"
#include "findingsjson.h"
#include "identifiedreceipt.h"
#include "journalerror.h"
#include "markjudgement.h"

#include <QJsonArray>

#include <gtest/gtest.h>

using namespace frctl;
using sale::Outcome;

namespace {

TEST(Answer, IdHasItsFormButOlderOnesAreFound)
{
    Options options;
    options.journal = std::make_shared<JournalAccess>(QStringLiteral(":memory:"));
    const auto ask = [&options](const QString& id) {
        options.id = id;
        static_cast<void>(knownAnswer(options, "{}"));
    };
    const QString longest(64, 'a');
    for (const QString& id : {QString("shop_7.A:1-2"), QString("8letters"), longest})
        EXPECT_NO_THROW(ask(id)) << id.toStdString();
    for (const QString& id : {longest + 'a', QString("7letter"), QString("till-1/2"), QString("касса-12")})
        EXPECT_THROW(ask(id), UsageError) << id.toStdString();
    options.journal->store().accept({options.id, "sell", "{}", {}});
    EXPECT_NO_THROW(ask(options.id));
}

TEST(Answer, OfASaleThatAnotherProgramHasSettledIsNoErrorOfThisOne)
{
    Options options;
    sale::IssueResult result;
    result.id = "till-1:1";
    result.verdict = {Outcome::Issued, 8};
    result.isFinal = true;
    const Output output = settledAnswer(options, result);
    EXPECT_EQ(output.status, ExitSuccess);
    EXPECT_EQ(output.lines, QStringList{"receipt issued before: document 8"});
    options.answer->settledIds = {result.id};
    EXPECT_EQ(settledAnswer(options, result).status, ExitIssued);
}

TEST(ThrowFailure, TellsWhetherADocumentWasOpened)
{
    const auto isNotOpened = [](const auto& exception, Outcome outcome) {
        sale::Failure failure;
        try {
            throw exception;
        } catch (...) {
            failure = sale::currentFailure();
        }
        try {
            throwFailure(failure, outcome);
        } catch (const RegisterError& error) {
            return error.isNotOpened();
        } catch (const Interrupted& interrupted) {
            return interrupted.isNotOpened();
        }
    };
    const FrPaperException paper(QStringLiteral("Нет бумаги"));
    EXPECT_TRUE(isNotOpened(paper, Outcome::None) && isNotOpened(Interrupted(), Outcome::None));
    EXPECT_FALSE(isNotOpened(paper, Outcome::Unasked) || isNotOpened(Interrupted(), Outcome::Unasked));
    // Nor is it known then whether an earlier run opened it.
    EXPECT_FALSE(isNotOpened(sale::JournalError(QStringLiteral("full")), Outcome::None));
    EXPECT_THROW(isNotOpened(std::bad_alloc(), Outcome::None), std::bad_alloc);
}

TEST(ReceiptOutput, SaysTheSameToPeopleAndMachines)
{
    sale::IssueResult result;
    result.verdict = {Outcome::Issued, 8};
    result.total = 1050;
    result.paid = 1100;
    result.change = 50;
    result.marks = {{QStringLiteral("01\u001D93"), 15, "items[0].markingCode"}};
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
    // Of what is wrong with it, machines get the code itself.
    const receipt::Finding finding{
        receipt::Finding::Error, "items[0].markingCode", result.marks.constFirst().markingCode, "is bad"};
    EXPECT_EQ(sale::findingJson(finding).value("given"), finding.given);
    EXPECT_EQ(finding.text(), "items[0].markingCode: \"01<GS>93\" is bad");
}

} // namespace
