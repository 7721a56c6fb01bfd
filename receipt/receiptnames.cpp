#include "receiptnames.h"

#include "barcode.h"
#include "checktype.h"
#include "excisemarktype.h"
#include "taxsystem.h"

namespace receipt::names {

namespace {

constexpr NamedValue receiptTypesTable[] = {
    {"sell", hw::fr::CheckSale},
    {"sellReturn", hw::fr::CheckSaleReturn},
};

constexpr NamedValue taxSystemsTable[] = {
    {"osn", hw::fr::common::TaxSystemGeneral},
    {"usnIncome", hw::fr::common::TaxSystemSimplifiedIncome},
    {"usnIncomeOutcome", hw::fr::common::TaxSystemSimplifiedIncomeOutcome},
    {"envd", hw::fr::common::TaxSystemImputedIncome},
    {"esn", hw::fr::common::TaxSystemAgricultural},
    {"patent", hw::fr::common::TaxSystemPatent},
};

constexpr NamedValue taxRatesTable[] = {
    {"vat20", 1},
    {"vat10", 2},
    {"vat120", 3},
    {"vat110", 4},
    {"vat0", 5},
    {"none", 6},
    {"vat5", 7},
    {"vat7", 8},
    {"vat105", 9},
    {"vat107", 10},
    {"vat22", 11},
    {"vat122", 12},
};

constexpr NamedValue paymentMethodsTable[] = {
    {"fullPrepayment", 1},
    {"prepayment", 2},
    {"advance", 3},
    {"fullPayment", 4},
    {"partialPayment", 5},
    {"credit", 6},
    {"creditPayment", 7},
};

constexpr NamedValue paymentObjectsTable[] = {
    {"commodity", 1},
    {"excise", 2},
    {"job", 3},
    {"service", 4},
    {"gamblingBet", 5},
    {"gamblingPrize", 6},
    {"lottery", 7},
    {"lotteryPrize", 8},
    {"intellectualActivity", 9},
    {"payment", 10},
    {"agentCommission", 11},
    {"pay", 12},
    {"another", 13},
    {"proprietaryLaw", 14},
    {"nonOperatingIncome", 15},
    {"otherContributions", 16},
    {"merchantTax", 17},
    {"resortFee", 18},
    {"deposit", 19},
    {"consumption", 20},
    {"soleProprietorCPIContributions", 21},
    {"cpiContributions", 22},
    {"soleProprietorCMIContributions", 23},
    {"cmiContributions", 24},
    {"csiContributions", 25},
    {"casinoPayment", 26},
    {"fundsIssuance", 27},
    {"exciseWithoutMarking", 30},
    {"exciseWithMarking", 31},
    {"commodityWithoutMarking", 32},
    {"commodityWithMarking", 33},
};

constexpr NamedValue measureUnitsTable[] = {
    {"piece", 0},
    {"gram", 10},
    {"kilogram", 11},
    {"ton", 12},
    {"centimeter", 20},
    {"decimeter", 21},
    {"meter", 22},
    {"squareCentimeter", 30},
    {"squareDecimeter", 31},
    {"squareMeter", 32},
    {"milliliter", 40},
    {"liter", 41},
    {"cubicMeter", 42},
    {"kilowattHour", 50},
    {"gkal", 51},
    {"day", 70},
    {"hour", 71},
    {"minute", 72},
    {"second", 73},
    {"kilobyte", 80},
    {"megabyte", 81},
    {"gigabyte", 82},
    {"terabyte", 83},
    {"otherUnits", 255},
};

constexpr NamedValue measureNamesTable[] = {
    {"шт.", 0},
    {"г", 10},
    {"кг", 11},
    {"т", 12},
    {"см", 20},
    {"дм", 21},
    {"м", 22},
    {"кв. см", 30},
    {"кв. дм", 31},
    {"кв. м", 32},
    {"мл", 40},
    {"л", 41},
    {"куб. м", 42},
    {"кВт∙ч", 50},
    {"Гкал", 51},
    {"сутки", 70},
    {"час", 71},
    {"мин", 72},
    {"с", 73},
    {"Кбайт", 80},
    {"Мбайт", 81},
    {"Гбайт", 82},
    {"Тбайт", 83},
};

constexpr NamedValue paymentKindsTable[] = {
    {"cash", 0},
    {"electronically", 1},
    {"prepaid", 2},
    {"credit", 3},
    {"other", 4},
};

constexpr NamedValue markTypesTable[] = {
    {"fur", MarkFur},
    {"alcohol", MarkAlcohol},
    {"tobacco", MarkTobacco},
    {"shoes", MarkShoes},
    {"common", MarkCommon},
    {"lightIndustry", MarkLightIndustry},
    {"medicine", MarkMedicine},
    {"other", MarkOther},
};

constexpr NamedValue agentTypesTable[] = {
    {"bankPayingAgent", 1},
    {"bankPayingSubagent", 2},
    {"payingAgent", 4},
    {"payingSubagent", 8},
    {"attorney", 16},
    {"commissionAgent", 32},
    {"another", 64},
};

constexpr NamedValue barcodeTypesTable[] = {
    {"UPC_A", Barcode::UpcA},
    {"UPC_E", Barcode::UpcE},
    {"EAN13", Barcode::Ean13},
    {"EAN8", Barcode::Ean8},
    {"CODE39", Barcode::Code39},
    {"ITF", Barcode::Itf},
    {"CODABAR", Barcode::Codabar},
    {"CODE93", Barcode::Code93},
    {"CODE128", Barcode::Code128},
    {"PDF417", Barcode::Pdf417},
    {"QR", Barcode::Qr},
};

} // namespace

QString nameOf(std::span<const NamedValue> values, int value)
{
    for (const NamedValue& entry : values) {
        if (entry.value == value)
            return QLatin1String(entry.name);
    }
    return QString::number(value);
}

std::span<const NamedValue> receiptTypes()
{
    return receiptTypesTable;
}

std::span<const NamedValue> taxSystems()
{
    return taxSystemsTable;
}

std::span<const NamedValue> taxRates()
{
    return taxRatesTable;
}

std::span<const NamedValue> paymentMethods()
{
    return paymentMethodsTable;
}

std::span<const NamedValue> paymentObjects()
{
    return paymentObjectsTable;
}

std::span<const NamedValue> measureUnits()
{
    return measureUnitsTable;
}

QString measureName(int code)
{
    for (const NamedValue& entry : measureNamesTable) {
        if (entry.value == code)
            return QString::fromUtf8(entry.name);
    }
    return {};
}

std::span<const NamedValue> paymentKinds()
{
    return paymentKindsTable;
}

std::span<const NamedValue> markTypes()
{
    return markTypesTable;
}

std::span<const NamedValue> agentTypes()
{
    return agentTypesTable;
}

std::span<const NamedValue> barcodeTypes()
{
    return barcodeTypesTable;
}

} // namespace receipt::names
