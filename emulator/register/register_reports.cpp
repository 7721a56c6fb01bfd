#include "register/register.h"

#include "register/page.h"
#include "register/parametertable.h"

#include <QtEndian>

#include <algorithm>

namespace emulator {

namespace {

constexpr int logoWidth = 288;
constexpr int logoHeight = 100;
constexpr qsizetype bitmapHeader = 54;

bool isLogo(const QByteArray& bitmap)
{
    if (bitmap.size() < bitmapHeader || !bitmap.startsWith("BM"))
        return false;
    const char* const data = bitmap.constData();
    const auto width = qFromLittleEndian<qint32>(data + 18);
    const auto height = qFromLittleEndian<qint32>(data + 22);
    const auto depth = qFromLittleEndian<qint16>(data + 28);
    return width == logoWidth && (height == logoHeight || height == -logoHeight) && depth == 1;
}

// Hosts scale their picture to this before they send it.
bool isHeaderSize(const QByteArray& bitmap)
{
    constexpr int widest = 575;
    constexpr int lowest = 50;
    constexpr int highest = 100;
    const auto width = qFromLittleEndian<qint32>(bitmap.constData() + 18);
    // Rows from the top downwards have a negative height.
    const auto height = qAbs(qint64{qFromLittleEndian<qint32>(bitmap.constData() + 22)});
    return width > 0 && width <= widest && height >= lowest && height <= highest;
}

bool isInn(const QString& inn)
{
    const bool digits = std::all_of(inn.cbegin(), inn.cend(), [](QChar letter) { return letter.isDigit(); });
    return digits && (inn.size() == 10 || inn.size() == 12);
}

QJsonObject entryOf(const char* type)
{
    return {{QStringLiteral("type"), QLatin1String(type)}};
}

} // namespace

Refusal Register::openShift(const Cashier& cashier)
{
    if (const Refusal refusal = checkReady(); refusal != Refusal::None)
        return refusal;
    if (m_shiftOpen)
        return Refusal::WrongState;
    if (const Refusal refusal = checkDrive(); refusal != Refusal::None)
        return refusal;
    m_shiftOpen = true;
    ++m_shiftNumber;
    m_receiptNumber = 0;
    m_shiftOpened = now();
    m_counters = ShiftCounters();
    const FiscalRecord record = store(FiscalType::ShiftOpening, entryOf("openShift"), cashier);
    const QStringList lines = reportPage(QStringLiteral("ОТЧЕТ ОБ ОТКРЫТИИ СМЕНЫ"), record, cashier);
    m_drive.keepPrint(lines);
    m_tape.print(lines);
    return Refusal::None;
}

Refusal Register::printTotals(const Cashier& cashier)
{
    if (const Refusal refusal = checkReady(); refusal != Refusal::None)
        return refusal;
    if (!m_shiftOpen)
        return Refusal::WrongState;
    Page page(m_identity.width);
    addHeader(page);
    page.centred(QStringLiteral("ТЕКУЩИЕ ИТОГИ СМЕНЫ (X-ОТЧЕТ)"));
    addTotals(page);
    page.pair(
        QStringLiteral("СМЕНА: %1").arg(m_shiftNumber), now().toString(QStringLiteral("dd.MM.yy HH:mm")));
    page.text(QStringLiteral("КАССИР: ") + cashier.name).cut();
    m_tape.print(page.lines());
    return Refusal::None;
}

Refusal Register::closeShift(const Cashier& cashier)
{
    if (const Refusal refusal = checkReady(); refusal != Refusal::None)
        return refusal;
    if (!m_shiftOpen)
        return Refusal::WrongState;
    if (m_parameters.isOn(parameter::automaticCollection))
        m_cash = 0;
    QJsonObject entry = entryOf("closeShift");
    entry[QStringLiteral("receipts")] = m_receiptNumber;
    entry[QStringLiteral("sales")] = moneyText(m_counters.sales.sum);
    entry[QStringLiteral("returns")] = moneyText(m_counters.returns.sum);
    entry[QStringLiteral("cashInDrawer")] = moneyText(m_cash);
    const FiscalRecord record = store(FiscalType::ShiftClosing, entry, cashier);
    const QStringList lines = reportPage(QStringLiteral("ОТЧЕТ О ЗАКРЫТИИ СМЕНЫ (Z-ОТЧЕТ)"), record, cashier);
    m_drive.keepPrint(lines);
    m_tape.print(lines);
    m_shiftOpen = false;
    m_counters = ShiftCounters();
    return Refusal::None;
}

Refusal Register::printAccounting(const Cashier& cashier, bool shiftMayBeOpen)
{
    if (const Refusal refusal = checkReady(); refusal != Refusal::None)
        return refusal;
    if (m_shiftOpen && !shiftMayBeOpen)
        return Refusal::WrongState;
    if (const Refusal refusal = checkDrive(); refusal != Refusal::None)
        return refusal;
    QJsonObject entry = entryOf("accountingReport");
    entry[QStringLiteral("unsent")] = m_drive.queueLength();
    const FiscalRecord record = store(FiscalType::AccountingReport, entry, cashier);
    const QStringList lines = reportPage(QStringLiteral("ОТЧЕТ О СОСТОЯНИИ РАСЧЕТОВ"), record, cashier);
    m_drive.keepPrint(lines);
    m_tape.print(lines);
    return Refusal::None;
}

Refusal Register::changeRegistration(const Registration& registration, const Cashier& cashier, int reasons)
{
    if (const Refusal refusal = checkReady(); refusal != Refusal::None)
        return refusal;
    if (m_shiftOpen)
        return Refusal::WrongState;
    if (const Refusal refusal = checkDrive(); refusal != Refusal::None)
        return refusal;
    constexpr int allSystems = (1 << taxSystemCount) - 1;
    const bool systems = registration.taxSystems > 0 && registration.taxSystems <= allSystems;
    if (!systems || !isInn(registration.userInn) || !isInn(registration.operatorInn)
        || registration.number.isEmpty())
        return Refusal::BadValue;
    if (m_drive.registrationsLeft() == 0)
        return Refusal::DriveWrongState;
    m_registration = registration;
    QJsonObject entry = entryOf("registrationChange");
    entry[QStringLiteral("taxSystems")] = registration.taxSystems;
    entry[QStringLiteral("reasons")] = reasons;
    const FiscalRecord record = store(FiscalType::RegistrationChange, entry, cashier);
    const QStringList lines = reportPage(QStringLiteral("ОТЧЕТ ОБ ИЗМЕНЕНИИ РЕГИСТРАЦИИ"), record, cashier);
    m_drive.keepPrint(lines);
    m_tape.print(lines);
    return Refusal::None;
}

Refusal Register::printStored(quint32 number)
{
    if (const Refusal refusal = checkReady(); refusal != Refusal::None)
        return refusal;
    const FiscalRecord* const record = m_drive.find(number);
    if (record == nullptr)
        return Refusal::DriveHasNoData;
    Page page(m_identity.width);
    page.centred(QStringLiteral("КОПИЯ ДОКУМЕНТА ИЗ ФН"));
    const QStringList lines = m_drive.print(number);
    if (lines.isEmpty()) {
        page.pair(QStringLiteral("ФД: %1").arg(record->number), QStringLiteral("ФПД: ") + record->sign);
        page.text(record->dateTime.toString(QStringLiteral("dd.MM.yy HH:mm"))).cut();
    }
    m_tape.print(page.append(lines).lines());
    return Refusal::None;
}

Refusal Register::setLogo(const QByteArray& bitmap)
{
    if (m_document.isOpen())
        return Refusal::WrongState;
    if (!isLogo(bitmap))
        return Refusal::BadValue;
    m_logo = bitmap;
    return Refusal::None;
}

bool Register::isHeaderPicture(const QByteArray& bitmap)
{
    return bitmap.size() >= bitmapHeader && bitmap.startsWith("BM") && isHeaderSize(bitmap);
}

Refusal Register::setHeaderPicture(const QByteArray& bitmap)
{
    if (m_document.isOpen())
        return Refusal::WrongState;
    if (!bitmap.isEmpty() && !isHeaderPicture(bitmap))
        return Refusal::BadValue;
    m_logo = bitmap;
    return Refusal::None;
}

Refusal Register::clearLogo()
{
    if (m_document.isOpen())
        return Refusal::WrongState;
    m_logo.clear();
    return Refusal::None;
}

} // namespace emulator
