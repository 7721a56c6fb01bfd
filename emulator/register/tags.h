#pragma once

#include <QString>

namespace emulator {

/// Tags of the fiscal data format as both protocols and the journal name them, by what they mean.
namespace tag {

// Register, fiscal drive and document
inline const QString documentTitle = QStringLiteral("1000");
inline const QString dateTime = QStringLiteral("1012"); // of the document
inline const QString registerNumber = QStringLiteral("1013"); // factory number of the register
inline const QString userInn = QStringLiteral("1018");
inline const QString cashier = QStringLiteral("1021"); // name of the cashier
inline const QString registrationNumber = QStringLiteral("1037");
inline const QString shiftNumber = QStringLiteral("1038");
inline const QString documentNumber = QStringLiteral("1040"); // number within the fiscal drive
inline const QString driveNumber = QStringLiteral("1041"); // factory number of the fiscal drive
inline const QString receiptNumber = QStringLiteral("1042"); // number within the shift
inline const QString userName = QStringLiteral("1048");
inline const QString operatorSilent = QStringLiteral("1053"); // the OFD has not answered for too long
inline const QString taxSystems = QStringLiteral("1062"); // bits of all that are registered
inline const QString fiscalSign = QStringLiteral("1077");
inline const QString extra = QStringLiteral("1084"); // requisite of the user, that is the register itself
inline const QString extraName = QStringLiteral("1085");
inline const QString extraValue = QStringLiteral("1086");
inline const QString unsentCount = QStringLiteral("1097"); // documents that the OFD has not got
inline const QString firstUnsentTime = QStringLiteral("1098");
inline const QString firstUnsentNumber = QStringLiteral("1116");
inline const QString registerFormat
    = QStringLiteral("1189"); // version of the fiscal data format, of the register
inline const QString driveFormat = QStringLiteral("1190"); // the same, of the fiscal drive
inline const QString cashierInn = QStringLiteral("1203");
inline const QString changeReasons = QStringLiteral("1205"); // bits: why the registration is changed

// Receipt
inline const QString total = QStringLiteral("1020");
inline const QString customerAddress = QStringLiteral("1008"); // telephone or mail
inline const QString cash = QStringLiteral("1031");
inline const QString settlement = QStringLiteral("1054"); // 1 sale, 2 return of a sale
inline const QString taxSystem = QStringLiteral("1055");
inline const QString positions = QStringLiteral("1059"); // list and each of its positions
inline const QString laterTaxes = QStringLiteral("1115"); // of rates that have no tag of their own
inline const QString laterTax = QStringLiteral("1119");
inline const QString laterTaxSum = QStringLiteral("1120");
inline const QString electronic = QStringLiteral("1081");
inline const QString place = QStringLiteral("1187"); // of settlement
inline const QString additional = QStringLiteral("1192"); // requisite of the receipt
inline const QString prepayment = QStringLiteral("1215");
inline const QString credit = QStringLiteral("1216");
inline const QString otherPayment = QStringLiteral("1217");
inline const QString customerName = QStringLiteral("1227");
inline const QString customerInn = QStringLiteral("1228");
inline const QString customer = QStringLiteral("1256"); // name and INN of the customer

// Position
inline const QString quantity = QStringLiteral("1023");
inline const QString itemName = QStringLiteral("1030");
inline const QString price = QStringLiteral("1079"); // before discount
inline const QString measureName = QStringLiteral("1197");
inline const QString taxRate = QStringLiteral("1199"); // code of the VAT rate
inline const QString paymentObject = QStringLiteral("1212");
inline const QString paymentMethod = QStringLiteral("1214");
inline const QString country = QStringLiteral("1230");
inline const QString declaration = QStringLiteral("1231"); // number of the customs declaration
inline const QString unit = QStringLiteral("2108"); // code of the measure unit
inline const QString industry = QStringLiteral("1260"); // requisite of a branch of trade
inline const QString industryAuthority = QStringLiteral("1262");
inline const QString industryDate = QStringLiteral("1263"); // of the document that the requisite rests on
inline const QString industryNumber = QStringLiteral("1264"); // of that document
inline const QString industryValue = QStringLiteral("1265");

// Agent and supplier
inline const QString transferAddress = QStringLiteral("1005"); // of the operator of the transfer
inline const QString transferInn = QStringLiteral("1016");
inline const QString transferName = QStringLiteral("1026");
inline const QString agentOperation = QStringLiteral("1044");
inline const QString agentPhone = QStringLiteral("1073");
inline const QString paymentOperatorPhone = QStringLiteral("1074");
inline const QString transferPhone = QStringLiteral("1075");
inline const QString supplierPhone = QStringLiteral("1171");
inline const QString agentKinds = QStringLiteral("1222"); // bits
inline const QString agent = QStringLiteral("1223"); // data of the agent
inline const QString supplier = QStringLiteral("1224"); // data of the supplier
inline const QString supplierName = QStringLiteral("1225");
inline const QString supplierInn = QStringLiteral("1226");

// Marked goods
inline const QString goodsCode = QStringLiteral("1163"); // with one child, named after the kind of code
inline const QString markingCode = QStringLiteral("2000");
inline const QString plannedStatus = QStringLiteral("2003");
inline const QString markingMode = QStringLiteral("2102"); // of processing
inline const QString checkResult = QStringLiteral("2106"); // bits
inline const QString assignedStatus = QStringLiteral("2110");

// Counters
inline const QString sales = QStringLiteral("1129");
inline const QString returns = QStringLiteral("1130");
inline const QString receiptCount = QStringLiteral("1135");
inline const QString countedCash = QStringLiteral("1136");
inline const QString countedElectronic = QStringLiteral("1138");
inline const QString driveTotals = QStringLiteral("1157"); // since the fiscal drive was put in
inline const QString shiftTotals = QStringLiteral("1194");
inline const QString countedSum = QStringLiteral("1201");
inline const QString countedPrepayment = QStringLiteral("1218");
inline const QString countedCredit = QStringLiteral("1219");
inline const QString countedOther = QStringLiteral("1220");

} // namespace tag

} // namespace emulator
