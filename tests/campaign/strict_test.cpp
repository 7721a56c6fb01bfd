// What our own drivers send is never refused by the strict register, and its fiscal drive keeps all of it.

#include "../emulator/kept.h"
#include "abstractfrdriver.h"
#include "exceptions.h"
#include "receiptissuer.h"
#include "receiptparser.h"
#include "rig.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace {

const QString code = QStringLiteral("0104600000000015215!Ab1cD\u001D93dGVz");

template <Protocol TheProtocol>
class Strict : public testing::Test
{
protected:
    Strict()
    {
        rig.start();
        driver.cashierLogin({"Иванова", "кассир", "772100000040"});
    }

    void TearDown() override { expectAllKept(rig.device); }

    void expectNoRefusal(const std::string& after)
    {
        for (const emulator::RefusedRequest& refused : rig.device.refusals().all())
            ADD_FAILURE() << after << ": " << refused.reason.toStdString();
        rig.device.refusals().clear();
    }

    void issueExamples()
    {
        const QDir folder(QStringLiteral(FRSPF_EXAMPLES));
        for (const QString& name : folder.entryList({"*.json"})) {
            QFile file(folder.filePath(name));
            ASSERT_TRUE(file.open(QIODevice::ReadOnly));
            const auto result = sale::issueReceipt(driver, receipt::receiptFromText(file.readAll()));
            EXPECT_TRUE(result.isIssued()) << name.toStdString();
            expectNoRefusal(name.toStdString());
        }
    }

    /// Made for the picture in the header.
    QString picture()
    {
        const QString name = m_folder.filePath("logo.png");
        QImage image(40, 40, QImage::Format_Mono);
        image.fill(1);
        EXPECT_TRUE(image.save(name));
        return name;
    }

    FrPosition position(ExciseMarkType mark) const
    {
        FrPosition goods("Молоко", 139.90, 1.254);
        goods.setDiscsum(mark == MarkFur ? 0.004 : static_cast<double>(mark));
        if (mark == MarkNone)
            return goods;
        goods.setMarkingCode(code, mark);
        // Whatever a host leaves out of the blocks goes out empty.
        goods.setRequisite(FdRequisite(EFrDriver::SupplierInn, "7721000017"));
        goods.setRequisite(FdRequisite(EFrDriver::IndustryRequisite, QVariantMap{{"1262", "030"}}));
        goods.setRequisite(FdRequisite(
            EFrDriver::AgentData, QVariantMap{{"1073", "+7"}, {"1044", "перевод"}, {"1005", "Москва"}}));
        return goods;
    }

    void sell(hw::fr::CheckType type, ExciseMarkType mark)
    {
        const FiscalDocument document(type);
        const FrPosition goods = position(mark);
        if (mark != MarkNone)
            driver.checkMarkingCode({1, code, 1.254, 0}, true);
        driver.checkOpen(document);
        driver.setRequisite(FdRequisite(EFrDriver::CustomerAddress, "a@b.example"));
        driver.setRequisite(FdRequisite(EFrDriver::CashierInn, "772100000040"));
        for (const auto font :
            {EFrDriver::DoubleSizeFont, EFrDriver::CondensedFont, EFrDriver::DoubleWidthFont,
                EFrDriver::SmallFont, EFrDriver::DoubleHeightFont, EFrDriver::InvertedFont}) {
            driver.setFont({font});
            driver.checkPrint({"строка & <b>"});
        }
        driver.barcodePrint({"4601234567890"});
        driver.barcodePrint({"текст\nкода", Barcode::Qr});
        driver.checkAddPosition(goods);
        driver.checkAddPosition(FrPosition("Вес", 139.90, 1.254));
        driver.checkTotal();
        driver.checkPay({1, 100.0});
        driver.checkPay({0, 400.0});
        driver.checkClose(document);
        expectNoRefusal("receipt " + std::to_string(type) + " mark " + std::to_string(mark));
    }

    void workOutsideAShift()
    {
        driver.registration({hw::fr::common::TaxSystemGeneral}, {}, "Иванова", {}, {});
        EXPECT_TRUE(driver.setDateTime(rig.device.now()));
        driver.getDateTime();
        EXPECT_TRUE(driver.setDefaults());
        EXPECT_TRUE(driver.setCliche({"Лавка", "у моста"}));
        EXPECT_TRUE(driver.setGraphicCliche(picture()));
        driver.getParametersDescription();
        driver.getDeviceStateDescription();
        driver.getFnStateDescription();
        driver.getFnInfo();
        driver.getAllTaxSystems();
    }

    void workInAShift()
    {
        for (const auto type : {hw::fr::CheckCashIn, hw::fr::CheckCashOut}) {
            driver.moneyCheckOpen(type, {});
            driver.moneyCheckPrint({"Размен\tи\nещё"});
            driver.moneyCheckClose(50);
        }
        driver.textDocOpen(hw::fr::CheckNonFiscal);
        driver.textDocClose();
        driver.xReport();
        driver.getCountersDescription();
        driver.getKkmRegisterBeg();
        driver.getKkmRegisterEnd();
        driver.printFnDocument(1);
        driver.drawerOpen();
        driver.isCashDrawerOpened();
        driver.checkMarkingCode({1, code, 1, 0}, true);
        driver.clearMarkingCodes();
        driver.zReport();
        driver.portClose();
        expectNoRefusal("operations");
    }

    Rig rig{TheProtocol};
    AbstractFrDriver& driver = rig.driver();

private:
    QTemporaryDir m_folder;
};

using StrictXml = Strict<Protocol::Xml>;
using StrictHex = Strict<Protocol::Hex>;

TEST_F(StrictXml, TakesAllReceiptsOfItsOwnDriver)
{
    for (int type = hw::fr::CheckSale; type <= hw::fr::CheckPurchaseAnnulment; ++type)
        sell(static_cast<hw::fr::CheckType>(type), MarkNone);
    for (int mark = MarkFur; mark <= MarkOther; ++mark) {
        for (const auto type : {hw::fr::CheckSale, hw::fr::CheckSaleReturn, hw::fr::CheckPurchase})
            sell(type, static_cast<ExciseMarkType>(mark));
    }
    issueExamples();
    // A close that is tried again has the tax system twice; change may leave a hair less than no cash.
    const FiscalDocument document;
    driver.checkOpen(document);
    driver.checkAddPosition(FrPosition("Хлеб", 0.70, 1));
    driver.checkPay({0, 0.10});
    driver.checkPay({1, 0.70});
    rig.device.setPaper(false);
    EXPECT_THROW(driver.checkClose(document), FrPaperException);
    EXPECT_EQ(rig.device.refusals().all().value(0).error, "3.8");
    rig.device.refusals().clear();
    rig.device.setPaper(true);
    driver.checkClose(document);
    expectNoRefusal("second close");
}

TEST_F(StrictXml, TakesAllOperationsOfItsOwnDriver)
{
    workOutsideAShift();
    EXPECT_TRUE(driver.setParams({{0, 0, 0, "OFD.OFD.OFD_Host.a.b"}, {0, 0, 0, "PRN.QR.QRFastPrint.true"}}));
    driver.openShift();
    driver.accountingReport();
    driver.getMoneyCounters(hw::fr::CheckSale);
    driver.getCheckCounters(hw::fr::CheckSale);
    driver.printLastFnDocument();
    workInAShift();
}

TEST_F(StrictHex, TakesAllReceiptsOfItsOwnDriver)
{
    driver.openShift();
    for (const auto type : {hw::fr::CheckSale, hw::fr::CheckSaleReturn}) {
        for (int mark = MarkNone; mark <= MarkOther; ++mark)
            sell(type, static_cast<ExciseMarkType>(mark));
    }
    issueExamples();
}

TEST_F(StrictHex, TakesAllOperationsOfItsOwnDriver)
{
    workOutsideAShift();
    EXPECT_TRUE(driver.setTail({"Ждём", "снова"}));
    driver.clearGraphicCliche();
    EXPECT_TRUE(driver.setParams({{0, 0, 5, "1"}}));
    driver.getOfdStatusInfo();
    driver.getDefaultTaxSystem();
    driver.getInn();
    driver.getFfdVersion();
    driver.accountingReport();
    driver.openShift();
    driver.openShift();
    driver.textDocOpen(hw::fr::CheckNonFiscal);
    driver.textDocPrint({"строка"});
    driver.textDocClose();
    driver.checkOpen(FiscalDocument(hw::fr::CheckSale));
    driver.checkCancel();
    driver.checkWaitForPrint();
    driver.getLastShiftNumber();
    driver.getFrDocNum();
    EXPECT_TRUE(driver.isShiftOpen());
    workInAShift();
}

TEST_F(StrictHex, ClockIsSetBetweenShiftsOnly)
{
    driver.openShift();
    // The register says so, as the driver does not ask first on this protocol.
    EXPECT_THROW(driver.setDateTime(rig.device.now()), FrCommandException);
    EXPECT_EQ(rig.device.refusals().all().value(0).command, "A3");
}

} // namespace
