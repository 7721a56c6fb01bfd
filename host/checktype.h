#pragma once

namespace hw::fr {

/// Kinds of documents that a host opens. The values travel as numbers between host, drivers and logs.
enum CheckType : int {
    CheckSale = 0,
    CheckSaleReturn = 1,
    CheckSaleAnnulment = 2,
    CheckReturnAnnulment = 3,
    CheckPurchase = 4,
    CheckPurchaseReturn = 5,
    CheckPurchaseAnnulment = 6,
    CheckCashIn = 7,
    CheckCashOut = 8,
    CheckSaleCorrection = 9,
    CheckReturnCorrection = 10,
    CheckNonFiscal = 11,
    CheckCopy = 12,
    /// No document; used where a driver has none open.
    CheckNone = 255
};

} // namespace hw::fr
