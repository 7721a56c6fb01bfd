#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

#include <cstddef>

/// The names of the protocol as they stand on the wire. Not here: the requisites of documents, whose names
/// are the numbers of EFrDriver::RequisiteTypes, and the tree of settings, which is the parameter catalogue.
namespace spfxml::names {

/// A literal that becomes a QString without a copy.
class Name
{
public:
    template <std::size_t Size>
    explicit constexpr Name(const char16_t (&text)[Size])
        : m_text(text, Size - 1)
    {
    }

    operator QString() const { return QString::fromRawData(m_text.data(), m_text.size()); }

private:
    QStringView m_text;
};

/// The envelope of a request.
namespace request {
inline constexpr Name root(u"ArmRequest");
inline constexpr Name body(u"RequestBody");
inline constexpr Name protocolLabel(u"ProtocolLabel");
inline constexpr Name protocolVersion(u"ProtocolVersion");
inline constexpr Name id(u"RequestId");
inline constexpr Name ffdVersion(u"msgFFDVer");
inline constexpr Name containerVersion(u"msgContVer");
inline constexpr Name time(u"DateTime");
inline constexpr Name command(u"Command");
inline constexpr Name data(u"RequestData");
} // namespace request

/// The envelope of an answer.
namespace answer {
inline constexpr QByteArrayView end("</ArmResponse>");
inline constexpr Name result(u"Result");
inline constexpr Name errorCategory(u"ErrorCategory");
inline constexpr Name errorCode(u"ErrorCode");
inline constexpr Name errorDescription(u"ErrorDescription");
inline constexpr Name data(u"ResponseData");
} // namespace answer

/// The tree of parameters inside either.
namespace tree {
inline constexpr Name node(u"pa");
inline constexpr Name name(u"n");
inline constexpr Name type(u"t");
} // namespace tree

/// What a whole tree is: the name of its root. The short numbers are the document types of the fiscal data
/// format.
namespace document {
inline constexpr Name shiftOpening(u"2");
inline constexpr Name receipt(u"3");
inline constexpr Name shiftClosing(u"5");
inline constexpr Name registrationChange(u"11");
inline constexpr Name accountingReport(u"21");
inline constexpr Name fnDocument(u"100000");
inline constexpr Name clock(u"200001");
inline constexpr Name nonFiscal(u"200003");
inline constexpr Name settingsRead(u"200004");
inline constexpr Name settingsWritten(u"200005");
inline constexpr Name moneyOperation(u"200007");
inline constexpr Name shiftReport(u"200015");
inline constexpr Name markingCheck(u"200017");
} // namespace document

/// Fields of those trees.
namespace field {
inline constexpr Name cashSum(u"CashSumm");
inline constexpr Name dateTime(u"DateTime");
inline constexpr Name discounts(u"ItemDiscounts");
inline constexpr Name discountName(u"Name");
inline constexpr Name discountValue(u"Value");
inline constexpr Name doNotPrint(u"DoNotPrint");
inline constexpr Name documentNumber(u"1040");
inline constexpr Name footer(u"Footer");
inline constexpr Name headerText(u"HeaderText");
inline constexpr Name isDrawerOpen(u"IsOpen");
inline constexpr Name moneyOperationType(u"MoneyOperationType");
inline constexpr Name nonFiscalText(u"NonFiscalText");
inline constexpr Name priceWithDiscount(u"PriceWithDiscount");
inline constexpr Name textAfterDocument(u"TextAfterDoc");
} // namespace field

/// Counters of the money that was put in and taken out.
namespace money {
inline constexpr Name block(u"MOCounters");
inline constexpr Name inCount(u"MOIncomeCount");
inline constexpr Name inSum(u"MOIncomeSum");
inline constexpr Name outCount(u"MOOutcomeCount");
inline constexpr Name outSum(u"MOOutcomeSum");
inline constexpr Name inDrawer(u"CashSumm");
} // namespace money

/// State of the shift.
namespace shift {
inline constexpr Name state(u"ShiftState");
inline constexpr Name overtime(u"ShiftOvertime");
inline constexpr Name number(u"1038");
inline constexpr Name documentNumber(u"1042");
} // namespace shift

/// State of the device.
namespace device {
inline constexpr Name networkInterface(u"NetworkInterface");
inline constexpr Name paperWidth(u"PaperWidth");
inline constexpr Name number(u"1013");
inline constexpr Name registrationNumber(u"1037");
inline constexpr Name firmwareVersion(u"KKTFWVersion");
inline constexpr Name softwareVersion(u"SWVersion");
inline constexpr Name ffdVersion1189(u"1189");
inline constexpr Name ffdVersion1190(u"1190");
} // namespace device

/// State of the fiscal drive.
namespace fn {
inline constexpr Name lifePhase(u"LifePhase");
inline constexpr Name currentDocumentType(u"CurrentDocType");
inline constexpr Name currentDocumentData(u"CurrentDocData");
inline constexpr Name needChange(u"StatusNeedChange");
inline constexpr Name endingResource(u"StatusEndingResource");
inline constexpr Name overflow(u"StatusOverflow");
inline constexpr Name ofdWaitExceeded(u"1053");
inline constexpr Name lastDocumentTime(u"lastDocDateTime");
inline constexpr Name lastDocumentNumber(u"lastDocNumber");
inline constexpr Name number(u"1041");
inline constexpr Name expirationDate(u"ExpirationDate");
inline constexpr Name firmwareVersion(u"FWVersion");
} // namespace fn

/// What waits for the OFD.
namespace ofd {
inline constexpr Name queueLength(u"1097");
inline constexpr Name firstDocumentTime(u"1098");
inline constexpr Name firstDocumentNumber(u"1116");
} // namespace ofd

/// Settings that the driver writes of its own accord.
namespace setting {
struct Path
{
    Name section;
    Name subsection;
    Name parameter;
};
inline constexpr Path cumulativeCounters{
    Name(u"MACRO"), Name(u"KKTCounters"), Name(u"GetCumulativeCounters")};
inline constexpr Path headerLines{Name(u"PRN"), Name(u"PrinterHeader"), Name(u"Cliche")};
inline constexpr Path headerPicture{Name(u"PRN"), Name(u"LogoImage"), Name(u"Image")};
} // namespace setting

} // namespace spfxml::names
