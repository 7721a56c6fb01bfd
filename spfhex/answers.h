#pragma once

#include "drivertexts.h"
#include "exceptions.h"

#include <QList>

/// Places of the fields in the answers that have more than one. A name with Count at its end is the number of
/// fields that an answer must have at least.
namespace spfhex::answer {

/// RequestStateStatus.
enum StatePlace {
    FatalStatus = 0,
    CurrentFlags = 1,
    /// State of the document times 256 plus its type.
    Document = 2
};

/// GetDateTime, and the dates and times of GetFnData.
enum MomentPlace { Date = 0, Time = 1, MomentCount = 2 };

/// GetFnData without a number.
enum FnStatePlace {
    LifePhase = 0,
    CurrentDocument = 1,
    HasDocumentData = 2,
    ShiftOpen = 3,
    WarningFlags = 4,
    FnStateCount = 5
};

/// GetFnData for the state of the notifications about marked goods; the driver reads one of its numbers.
enum NotificationPlace { NotSent = 6, NotificationCount = 7 };

/// GetFnData for the version of the fiscal drive.
enum FnVersionPlace { FnVersion = 0, IsSerial = 1, FnVersionCount = 2 };

/// GetRegistrationData without a number. The driver reads none of these fields: it hands them back to the
/// device in Registration, in the order that the device wants there. The names are those of the
/// requisites that fit these places; nothing in the driver depends on them.
enum RegistrationPlace {
    RegistrationNumber = 0,
    TaxSite = 1,
    RegistrationDate = 2,
    UserInn = 3,
    UserName = 4,
    Address = 5,
    Place = 6,
    OfdInn = 7,
    OfdName = 8,
    TaxSystems = 9,
    WorkModes = 10,
    AgentTypes = 11,
    SenderEmail = 12,
    RegistrationCount = 13
};

/// GetKktData for the numbers of the shift's documents. The places between are other documents.
enum DocumentCounterPlace {
    Sales = 0,
    SaleReturns = 1,
    CashIns = 11,
    CashOuts = 12,
    DocumentCounterCount = 13
};

/// GetKktData for the sums of the shift's documents.
enum DocumentSumPlace {
    SalesSum = 0,
    SaleReturnsSum = 1,
    CashInsSum = 9,
    CashOutsSum = 10,
    DocumentSumCount = 11
};

/// The fields again; throws FrCommandException when they are fewer than that.
template <typename T>
QList<T> atLeast(qsizetype count, const QList<T>& fields)
{
    if (fields.size() < count)
        throw FrCommandException(drivertexts::badAnswer());
    return fields;
}

} // namespace spfhex::answer
