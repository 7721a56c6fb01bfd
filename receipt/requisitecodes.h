#pragma once

namespace receipt {

/// Payment methods of a position, tag 1214.
enum PaymentMethod {
    FullPrepayment = 1,
    Prepayment,
    Advance,
    FullPayment,
    PartialPayment,
    CreditGiven,
    CreditPayment
};

/// Payment objects, tag 1212: those that decide something here.
enum PaymentObject {
    Commodity = 1,
    /// An advance or an instalment, behind which there are no goods.
    MoneyAlone = 10,
    ExciseWithMarking = 31,
    CommodityWithMarking = 33
};

} // namespace receipt
