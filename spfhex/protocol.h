#pragma once

/// The numbers of the HEX protocol. The fields of the commands are in requests.h, those of the answers in
/// answers.h.
namespace spfhex::protocol {

enum CommandCode {
    Initialize = 0x00,
    Registration = 0x08,
    OpenDocument = 0x20,
    PrintText = 0x21,
    FinishDocument = 0x22,
    CancelDocument = 0x23,
    PrintBarcode = 0x24,
    PrintQrCode = 0x29,
    AddPaymentObject = 0x30,
    Subtotal = 0x34,
    Payment = 0x35,
    SumInOut = 0x36,
    BindAgentData = 0x3C,
    CheckMarkingCode = 0x3D,
    ClearMarkingCodes = 0x3F,
    BindMarkingCode = 0x41,
    PrintShiftCurrentTotals = 0x60,
    PrintShiftCloseReport = 0x61,
    PrintFnDocument = 0x65,
    AccountingReport = 0x6A,
    OpenShift = 0x6B,
    OpenDrawer = 0x80,
    RequestStateStatus = 0xA0,
    GetParameter = 0xA1,
    SetParameter = 0xA2,
    SetDateTime = 0xA3,
    GetFnData = 0xA4,
    GetKktData = 0xA5,
    GetSerialNumber = 0xA6,
    GetDateTime = 0xA7,
    GetDrawerState = 0xA8,
    GetRegistrationData = 0xC0,
    SetLogo = 0xE2,
    ClearLogo = 0xE3
};

/// What GetFnData is asked for.
enum FnQuery {
    LastFdNumberQuery = 1,
    LastFdDateTimeQuery = 2,
    FnNumberQuery = 3,
    FnExpirationDateQuery = 5,
    AvailableRegistrationsQuery = 6,
    RegistrationsQuery = 7,
    OfdConnectionQuery = 8,
    FirstUnsentFdNumberQuery = 10,
    FirstUnsentFdDateTimeQuery = 11,
    FfdVersionQuery = 12,
    IsmNotSentQuery = 14,
    FnVersionQuery = 15
};

/// What GetKktData is asked for.
enum KktQuery {
    ModelVersionQuery = 0,
    ShiftNumberQuery = 1,
    SaleCountersQuery = 3,
    BackCountersQuery = 4,
    DrawerSumQuery = 5,
    NextFdNumberQuery = 7,
    InnQuery = 9,
    RegistrationNumberQuery = 10,
    DocumentCountersQuery = 13,
    DocumentSumsQuery = 14
};

/// What GetRegistrationData is asked for.
enum RegistrationQuery { TaxSystemsQuery = 10 };

/// Types of documents, in OpenDocument and in the device's state.
enum DocumentType {
    NoDocument = 0,
    NonFiscalDocument = 1,
    SaleDocument = 2,
    SaleReturnDocument = 3,
    CashInDocument = 4,
    CashOutDocument = 5
};

/// Bits of the state's current flags.
enum CurrentFlag { NotInitialized = 0, ShiftOpened = 2 };

/// Payments and the sums by payment kind know the kinds 0 to 4.
constexpr int paymentKindCount = 5;

/// How PrintText prints.
enum TextAttribute {
    NormalText = 0,
    CondensedText = 1,
    DoubleHeightText = 16,
    DoubleWidthText = 32,
    DoubleSizeText = 48,
    InvertedText = 128
};

/// The device's barcodes that have another number than the host's.
enum BarcodeType { Code93Barcode = 7, Code128Barcode = 8 };

/// The table of a parameter record; the device has one, and it does not go out.
inline constexpr unsigned short parameterTable = 1;

/// Parameters that the driver itself reads and writes; the whole table is in paramtable.cpp.
enum Parameter : unsigned short {
    DrawerOpeningParameter = 4,
    LogoParameter = 5,
    CashControlParameter = 6,
    AutomaticCollectionParameter = 8,
    CutTypeParameter = 11,
    ReceiptDesignParameter = 13,
    ClicheLinesParameter = 20,
    TailLinesParameter = 21,
    PaymentNamesParameter = 22,
    AutomaticPaymentParameter = 30,
    NoExtraClicheLineParameter = 38,
    ReceiptRequisitesParameter = 40
};

} // namespace spfhex::protocol
