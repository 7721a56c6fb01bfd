#pragma once

#include "receiptissuer.h"
#include "recordingdriver.h"

#include <gtest/gtest.h>

using namespace sale;
using receipt::ReceiptItem;

namespace {

const RegisterLine hexLine{receipt::Protocol::Hex, true};
/// What is asked before a receipt, and after a close that failed.
const std::string noting = "shift registers next sums";
const std::string asked = "registers next sums ask";

inline Verdict countedOn(quint32 number)
{
    Verdict verdict(Outcome::Issued, number);
    verdict.isNumberRead = false;
    return verdict;
}

class Issue : public testing::Test
{
protected:
    Issue()
    {
        ReceiptItem goods;
        goods.position = FrPosition(QStringLiteral("Молоко"), 10, 1);
        goods.position.setMarkingCode(QStringLiteral("0104"), MarkCommon);
        ReceiptItem text;
        text.kind = ReceiptItem::Text;
        ReceiptItem barcode;
        barcode.kind = ReceiptItem::BarcodeItem;
        receipt.items = {text, goods, barcode};
        receipt.requisites = {FdRequisite(EFrDriver::CustomerAddress, QStringLiteral("+7"))};
        receipt.payments = {FrPayment(1, 1), FrPayment(0, 7), FrPayment(4, 3)};
        receipt.cashier = FrUser{QStringLiteral("Иванова"), {}, {}};
        receipt.total = 1000;
        receipt.paid = 1100;
    }

    IssueResult issue() { return issueReceipt(driver, receipt, {hexLine}); }

    BasicFrSettings settings;
    RecordingDriver driver{&settings};
    receipt::Receipt receipt;
};

const std::string filled = noting + " mark open requisite print position barcode total pay1 pay4 pay0";

} // namespace
