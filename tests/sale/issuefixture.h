#pragma once

#include "receiptissuer.h"
#include "recordingdriver.h"

#include <gtest/gtest.h>

namespace {

const sale::RegisterLine hexLine{receipt::Protocol::Hex, true};
/// What is asked before a receipt, and after a close that failed.
const std::string noting = "shift registers next sums";
const std::string asked = "registers next sums ask";

inline sale::Verdict countedOn(quint32 number)
{
    sale::Verdict verdict(sale::Outcome::Issued, number);
    verdict.isNumberRead = false;
    return verdict;
}

class Issue : public testing::Test
{
protected:
    Issue()
    {
        receipt::ReceiptItem goods;
        goods.position = FrPosition(QStringLiteral("Молоко"), 10, 1);
        goods.position.setMarkingCode(QStringLiteral("0104"), MarkCommon);
        receipt::ReceiptItem text;
        text.kind = receipt::ReceiptItem::Text;
        receipt::ReceiptItem barcode;
        barcode.kind = receipt::ReceiptItem::BarcodeItem;
        receipt.items = {text, goods, barcode};
        receipt.requisites = {FdRequisite(EFrDriver::CustomerAddress, QStringLiteral("+7"))};
        receipt.payments = {FrPayment(1, 1), FrPayment(0, 7), FrPayment(4, 3)};
        receipt.cashier = FrUser{QStringLiteral("Иванова"), {}, {}};
        receipt.total = 1000;
        receipt.paid = 1100;
    }

    sale::IssueResult issue() { return sale::issueReceipt(driver, receipt, {hexLine}); }

    BasicFrSettings settings;
    RecordingDriver driver{&settings};
    receipt::Receipt receipt;
};

const std::string filled = noting + " mark open requisite print position barcode total pay1 pay4 pay0";

} // namespace
