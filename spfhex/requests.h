#pragma once

#include "answers.h"
#include "fields.h"
#include "protocol.h"

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariant>

#include <optional>

/// The fields of each command that has any, under the command's name. A record has the values that the driver
/// gives, its conversion puts them into the order of the frame, each in its encoding and with its limit. A
/// caller that leaves a value out is told so by the compiler.
namespace spfhex::request {

using Fields = QList<QVariant>;
/// A requisite that a position may lack.
using OptionalText = std::optional<QString>;

struct Initialize
{
    // As the device gave them.
    QByteArray date;
    QByteArray time;

    operator Fields() const { return {field::asGiven(date), field::asGiven(time)}; }
};

struct Registration
{
    /// The answer of GetRegistrationData.
    QList<QByteArray> present;
    QString cashierName;
    /// Mask of the new tax systems.
    int taxSystems;

    operator Fields() const
    {
        return {
            field::empty(),
            field::asGiven(present.at(answer::UserName)),
            field::asGiven(present.at(answer::UserInn)),
            field::asGiven(present.at(answer::RegistrationNumber)),
            field::cp866(cashierName),
            field::empty(),
            field::asGiven(present.at(answer::Address)),
            field::asGiven(present.at(answer::Place)),
            field::number(taxSystems),
            field::asGiven(present.at(answer::AgentTypes)),
            field::asGiven(present.at(answer::WorkModes)),
            field::asGiven(present.at(answer::OfdInn)),
            field::asGiven(present.at(answer::OfdName)),
            field::asGiven(present.at(answer::TaxSite)),
            field::asGiven(present.at(answer::SenderEmail)),
            field::asGiven(QStringLiteral("128")), // a constant of the device, as text
            field::empty(),
            field::empty(),
        };
    }
};

struct OpenDocument
{
    /// One of protocol::DocumentType.
    int type;
    QString cashierName;
    QString cashierInn;
    int taxSystem;
    QString customerAddress;
    bool withoutPrinting;

    operator Fields() const
    {
        return {
            field::number(type),
            field::empty(),
            field::cp866(cashierName),
            field::utf8(cashierInn),
            field::empty(),
            field::number(taxSystem),
            field::cp866(customerAddress),
            field::flag(withoutPrinting),
            field::empty(),
            field::empty(),
        };
    }
};

struct PrintText
{
    QString text;
    protocol::TextAttribute attribute;

    operator Fields() const { return {field::cp866(text, 256), field::number(attribute)}; }
};

struct FinishDocument
{
    operator Fields() const { return {field::constant(0), field::constant(1), field::constant(0)}; }
};

struct PrintBarcode
{
    int textPosition;
    /// Dots.
    int moduleWidth;
    int height;
    /// The device's number.
    int type;
    QString text;

    operator Fields() const
    {
        return {
            field::number(textPosition),
            field::number(moduleWidth),
            field::number(height),
            field::number(type),
            field::cp866(text),
        };
    }
};

struct PrintQrCode
{
    /// Dots.
    int moduleWidth;
    QString text;

    operator Fields() const
    {
        return {field::number(moduleWidth), field::constant(1), field::cp866(text, 256)};
    }
};

struct AddPaymentObject
{
    QString name;
    QString barcode;
    double count;
    /// Roubles, after the discount.
    double price;
    int taxCode;
    int paymentMethod;
    OptionalText countryOfOrigin;
    OptionalText customsDeclaration;
    int paymentObject;
    int unit;
    /// The checked status of the marking code, null when there is none.
    QVariant markingStatus;
    OptionalText industryAuthority;
    QDate industryDocumentDate;
    OptionalText industryDocumentNumber;
    OptionalText industryValue;

    operator Fields() const
    {
        return {
            field::cp866(name, 48),
            field::utf8(barcode, 13),
            field::quantity(count),
            field::money(price),
            field::constant(0),
            field::number(taxCode),
            field::empty(),
            field::number(paymentMethod),
            field::empty(),
            field::empty(),
            field::utf8(countryOfOrigin, 3),
            field::utf8(customsDeclaration, 32),
            field::number(paymentObject),
            field::number(unit),
            field::constant(2),
            field::asGiven(markingStatus),
            field::utf8(industryAuthority, 3),
            field::date(industryDocumentDate),
            field::utf8(industryDocumentNumber, 32),
            field::utf8(industryValue, 256),
            field::empty(),
            field::empty(),
            field::empty(),
        };
    }
};

struct Payment
{
    int kind;
    /// Roubles.
    double sum;

    operator Fields() const { return {field::number(kind), field::money(sum)}; }
};

struct SumInOut
{
    /// Roubles.
    double sum;

    operator Fields() const { return {field::empty(), field::money(sum)}; }
};

struct BindAgentData
{
    std::optional<int> agentType;
    OptionalText agentOperation;
    OptionalText agentPhone;
    OptionalText transferOperatorName;
    OptionalText transferOperatorAddress;
    OptionalText transferOperatorPhone;
    OptionalText transferOperatorInn;
    OptionalText paymentOperatorPhone;
    OptionalText supplierPhone;
    OptionalText supplierName;
    OptionalText supplierInn;

    operator Fields() const
    {
        return {
            field::number(agentType),
            field::utf8(agentOperation, 24),
            field::utf8(agentPhone, 19),
            field::utf8(transferOperatorName, 64),
            field::utf8(transferOperatorAddress, 256),
            field::utf8(transferOperatorPhone, 19),
            field::utf8(transferOperatorInn, 12),
            field::utf8(paymentOperatorPhone, 19),
            field::utf8(supplierPhone, 19),
            field::utf8(supplierName, 19), // as short as a telephone number, and meant so
            field::utf8(supplierInn, 12),
        };
    }
};

struct CheckMarkingCode
{
    /// Planned state of the goods.
    int status;
    double quantity;
    int measureUnit;
    /// With its group separators.
    QString code;

    operator Fields() const
    {
        return {
            field::constant(0),
            field::number(status),
            field::shortestQuantity(quantity), // unlike that of a position
            field::number(measureUnit),
            field::empty(),
            field::empty(),
            field::cp866Hex(code),
            field::constant(0),
            field::empty(),
            field::empty(),
        };
    }
};

struct BindMarkingCode
{
    /// With its group separators.
    QString code;

    operator Fields() const
    {
        return {field::utf8(code), field::constant(0), field::empty(), field::constant(255)};
    }
};

struct PrintShiftCurrentTotals
{
    QString cashierName;

    operator Fields() const { return {field::cp866(cashierName)}; }
};

struct PrintShiftCloseReport
{
    QString cashierName;
    QString cashierInn;

    operator Fields() const { return {field::cp866(cashierName), field::utf8(cashierInn)}; }
};

struct PrintFnDocument
{
    long number;

    operator Fields() const { return {field::number(number)}; }
};

struct AccountingReport
{
    QString cashierName;

    operator Fields() const { return {field::cp866(cashierName)}; }
};

struct OpenShift
{
    QString cashierName;
    QString cashierInn;

    operator Fields() const { return {field::utf8(cashierName), field::utf8(cashierInn)}; }
};

struct GetParameter
{
    int parameter;
    int row;

    operator Fields() const { return {field::number(parameter), field::number(row)}; }
};

struct SetParameter
{
    int parameter;
    int row;
    QString value;

    operator Fields() const { return {field::number(parameter), field::number(row), field::utf8(value)}; }
};

struct SetDateTime
{
    QDateTime moment;

    operator Fields() const { return {field::date(moment), field::time(moment)}; }
};

struct GetFnData
{
    protocol::FnQuery query;

    operator Fields() const { return {field::number(query)}; }
};

struct GetKktData
{
    protocol::KktQuery query;

    operator Fields() const { return {field::number(query)}; }
};

/// The second form of GetKktData: the release instead of the model.
struct GetKktRelease
{
    operator Fields() const { return {field::number(protocol::ModelVersionQuery), field::constant(1)}; }
};

struct GetRegistrationData
{
    protocol::RegistrationQuery query;

    operator Fields() const { return {field::number(query)}; }
};

struct SetLogo
{
    /// Of the picture that follows, in bytes.
    qsizetype size;

    operator Fields() const { return {field::number(static_cast<long long>(size))}; }
};

} // namespace spfhex::request
