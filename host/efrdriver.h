#pragma once

#include <QtCore/qglobal.h>

/// Enumerations of the driver contract whose values travel as numbers.
class EFrDriver
{
public:
    /// Fonts of printed lines. The register decides what each one looks like; 1 is the normal font.
    enum FontTypes : int {
        UndefinedFont = 0,
        NormalFont = 1,
        /// Double width and height over HEX; over XML bold, as wide as the normal one.
        DoubleSizeFont = 2,
        /// As SmallFont over HEX, as NormalFont over XML.
        CondensedFont = 3,
        DoubleWidthFont = 4,
        SmallFont = 5,
        DoubleHeightFont = 6,
        InvertedFont = 7
    };

    /// How a device is to be restarted.
    enum RebootMode : int { RebootNormal = 0, RebootCold = 1 };

    /// Tags of the fiscal data format. Any 16-bit tag may travel, also one without a name here.
    enum RequisiteTypes : unsigned {
        NoRequisite = 0,
        TransferOperatorAddress = 1005,
        CustomerAddress = 1008,
        TransferOperatorInn = 1016,
        UserInn = 1018,
        CashierName = 1021,
        ItemQuantity = 1023,
        TransferOperatorName = 1026,
        ItemName = 1030,
        CashSum = 1031,
        RegistrationNumber = 1037,
        ShiftNumber = 1038,
        ItemSum = 1043,
        AgentOperation = 1044,
        SettlementType = 1054,
        TaxSystem = 1055,
        Item = 1059,
        TaxSystems = 1062,
        AgentPhone = 1073,
        PaymentOperatorPhone = 1074,
        TransferOperatorPhone = 1075,
        ItemPrice = 1079,
        ElectronicSum = 1081,
        SaleCounters = 1129,
        ReturnCounters = 1130,
        ReceiptCount = 1135,
        CashTotal = 1136,
        ElectronicTotal = 1138,
        FnTotals = 1157,
        ProductCode = 1162,
        ProductCodeBlock = 1163,
        SupplierPhone = 1171,
        SettlementPlace = 1187,
        AdditionalReceiptRequisite = 1192,
        ShiftTotals = 1194,
        MeasureName = 1197,
        TaxRate = 1199,
        ReceiptsSum = 1201,
        CashierInn = 1203,
        RegistrationChangeReasons = 1205,
        PaymentObject = 1212,
        PaymentMethod = 1214,
        PrepaymentSum = 1215,
        CreditSum = 1216,
        OtherSum = 1217,
        PrepaymentTotal = 1218,
        CreditTotal = 1219,
        OtherTotal = 1220,
        ItemAgentType = 1222,
        AgentData = 1223,
        SupplierData = 1224,
        SupplierName = 1225,
        SupplierInn = 1226,
        CustomerName = 1227,
        CustomerInn = 1228,
        CountryOfOrigin = 1230,
        CustomsDeclaration = 1231,
        CustomerBlock = 1256,
        IndustryRequisite = 1260,
        IndustryAuthority = 1262,
        IndustryDocumentDate = 1263,
        IndustryDocumentNumber = 1264,
        IndustryValue = 1265,
        ProductCodeUnknown = 1300,
        ProductCodeEan8 = 1301,
        ProductCodeEan13 = 1302,
        ProductCodeItf14 = 1303,
        ProductCodeGs1 = 1304,
        ProductCodeGs1M = 1305,
        ProductCodeShort = 1306,
        ProductCodeFur = 1307,
        ProductCodeExcise20 = 1308,
        ProductCodeExcise30 = 1309,
        MarkingCode = 2000,
        PlannedItemStatus = 2003,
        MarkingProcessingMode = 2102,
        MarkingCheckResult = 2106,
        MeasureUnit = 2108,
        AssignedItemStatus = 2110
    };
};
