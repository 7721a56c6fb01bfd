#include "panel/stateview.h"

#include "panel/desk.h"
#include "panel/jsonvalues.h"

#include <QCoreApplication>
#include <QJsonArray>

namespace emulator::panel::stateview {

namespace {

QString paperState(const Paper& paper)
{
    if (!paper.isIn)
        return QStringLiteral("out");
    return paper.linesLeft ? QStringLiteral("nearEnd") : QStringLiteral("in");
}

QString powerState(const Register& device)
{
    return device.isPowered() ? QStringLiteral("on") : QStringLiteral("off");
}

QString typeName(DocumentType type)
{
    switch (type) {
    case DocumentType::Sale:
        return QStringLiteral("sell");
    case DocumentType::SaleReturn:
        return QStringLiteral("sellReturn");
    case DocumentType::CashIn:
        return QStringLiteral("cashIn");
    case DocumentType::CashOut:
        return QStringLiteral("cashOut");
    case DocumentType::NonFiscal:
    case DocumentType::None:
        break;
    }
    return QStringLiteral("nonFiscal");
}

QString phaseName(Phase phase)
{
    switch (phase) {
    case Phase::Positions:
        return QStringLiteral("positions");
    case Phase::Subtotal:
        return QStringLiteral("subtotal");
    case Phase::Payment:
        return QStringLiteral("payment");
    case Phase::Unprinted:
        return QStringLiteral("unprinted");
    case Phase::CancelImpossible:
        return QStringLiteral("cancelImpossible");
    case Phase::Open:
    case Phase::Closed:
        break;
    }
    return QStringLiteral("open");
}

QJsonValue openDocument(const Document& document)
{
    if (!document.isOpen())
        return {};
    return QJsonObject{{QStringLiteral("type"), typeName(document.type)},
        {QStringLiteral("phase"), phaseName(document.phase)},
        {QStringLiteral("positions"), document.items.size()},
        {QStringLiteral("total"), moneyText(document.isMoney() ? document.money : document.total())},
        {QStringLiteral("paid"), moneyText(sumOf(document.payments))}};
}

QJsonObject turnover(const Turnover& turnover)
{
    return {{QStringLiteral("count"), turnover.count}, {QStringLiteral("sum"), moneyText(turnover.sum)}};
}

QJsonObject shift(const Register& device)
{
    const Shift& shift = device.state().shift;
    return {{QStringLiteral("open"), shift.isOpen}, {QStringLiteral("number"), shift.number},
        {QStringLiteral("opened"), jsonvalues::textOrNull(jsonvalues::time(shift.opened))},
        {QStringLiteral("tooLong"), device.isShiftTooLong()}, {QStringLiteral("receipts"), shift.receipts},
        {QStringLiteral("sales"), turnover(shift.counters.sales)},
        {QStringLiteral("returns"), turnover(shift.counters.returns)},
        {QStringLiteral("cashIn"), turnover(shift.counters.cashIn)},
        {QStringLiteral("cashOut"), turnover(shift.counters.cashOut)},
        {QStringLiteral("cancelled"), shift.counters.cancelled}};
}

QJsonObject drive(const Register& device)
{
    const FiscalDrive& drive = device.drive();
    const std::optional<qint64> left = drive.memory().documentsLeft;
    return {{QStringLiteral("number"), drive.number()}, {QStringLiteral("phase"), drive.lifePhase()},
        {QStringLiteral("expiry"), drive.expiry().toString(Qt::ISODate)},
        {QStringLiteral("documents"), static_cast<qint64>(drive.last().number)},
        {QStringLiteral("documentsLeft"), left ? QJsonValue(*left) : QJsonValue()},
        {QStringLiteral("warnings"), drive.warnings(device.now())}};
}

QJsonObject identity(const Register& device)
{
    const Identity& identity = device.identity();
    return {{QStringLiteral("model"), identity.model}, {QStringLiteral("release"), identity.release},
        {QStringLiteral("serialNumber"), identity.serialNumber.trimmed()},
        {QStringLiteral("width"), device.settings().paperWidth()}};
}

QJsonObject registration(const Registration& registration)
{
    return {{QStringLiteral("number"), registration.number},
        {QStringLiteral("userInn"), registration.userInn},
        {QStringLiteral("userName"), registration.userName},
        {QStringLiteral("address"), registration.address}, {QStringLiteral("place"), registration.place},
        {QStringLiteral("operatorInn"), registration.operatorInn},
        {QStringLiteral("operatorName"), registration.operatorName},
        {QStringLiteral("taxSystems"), registration.taxSystems},
        {QStringLiteral("modes"), registration.modes}, {QStringLiteral("agents"), registration.agents}};
}

} // namespace

QJsonObject whole(const Desk& desk)
{
    const Register& device = desk.device();
    return {{QStringLiteral("register"), desk.number()}, {QStringLiteral("line"), desk.line()},
        {QStringLiteral("tcpConnections"), jsonvalues::textOrNull(desk.tcpConnections())},
        {QStringLiteral("version"), QCoreApplication::applicationVersion()},
        {QStringLiteral("identity"), identity(device)},
        {QStringLiteral("registration"), registration(device.state().registration)},
        {QStringLiteral("clock"), clock(desk)}, {QStringLiteral("shift"), shift(device)},
        {QStringLiteral("drawer"), drawer(desk)}, {QStringLiteral("paper"), paper(desk)},
        {QStringLiteral("cover"), cover(desk)}, {QStringLiteral("power"), power(desk)},
        {QStringLiteral("ofd"), operatorLink(desk)}, {QStringLiteral("drive"), drive(device)},
        {QStringLiteral("document"), openDocument(device.document())},
        {QStringLiteral("faultRules"), desk.faults().rules().uses().size()},
        {QStringLiteral("plannedFaults"), desk.faults().planned().size()},
        {QStringLiteral("stopped"), jsonvalues::textOrNull(desk.stopReason())},
        {QStringLiteral("lastExchange"), jsonvalues::numberOrNull(desk.exchanges().last())},
        {QStringLiteral("lastEvent"), QString::fromLatin1(desk.events().idOf(desk.events().lastNumber()))}};
}

QJsonObject brief(const Desk& desk)
{
    const Register& device = desk.device();
    return {{QStringLiteral("register"), desk.number()}, {QStringLiteral("line"), desk.line()},
        {QStringLiteral("serialNumber"), device.identity().serialNumber.trimmed()},
        {QStringLiteral("driveNumber"), device.drive().number()},
        {QStringLiteral("shiftOpen"), device.state().shift.isOpen},
        {QStringLiteral("paper"), paperState(device.state().paper)},
        {QStringLiteral("power"), powerState(device)},
        {QStringLiteral("stopped"), jsonvalues::textOrNull(desk.stopReason())}};
}

QJsonObject clock(const Desk& desk)
{
    return {{QStringLiteral("time"), jsonvalues::time(desk.device().now())},
        {QStringLiteral("speed"), desk.device().clockSpeed()}};
}

QJsonObject drawer(const Desk& desk)
{
    return {{QStringLiteral("open"), desk.device().isDrawerOpen()},
        {QStringLiteral("cash"), moneyText(desk.device().state().drawer.cash)}};
}

QJsonObject paper(const Desk& desk)
{
    const Paper& paper = desk.device().state().paper;
    return {{QStringLiteral("state"), paperState(paper)},
        {QStringLiteral("linesLeft"), paper.linesLeft ? QJsonValue(*paper.linesLeft) : QJsonValue()},
        {QStringLiteral("waiting"), paper.waiting.size()}};
}

QJsonObject cover(const Desk& desk)
{
    return {{QStringLiteral("open"), desk.device().state().paper.isCoverOpen}};
}

QJsonObject power(const Desk& desk)
{
    QJsonValue cut;
    if (const std::optional<PowerCut> planned = desk.faults().powerCut())
        cut = *planned == PowerCut::AfterStoring ? QStringLiteral("afterStoring")
                                                 : QStringLiteral("beforeStoring");
    return {{QStringLiteral("state"), powerState(desk.device())}, {QStringLiteral("offAt"), cut}};
}

QJsonObject operatorLink(const Desk& desk)
{
    const FiscalDrive& drive = desk.device().drive();
    const FiscalRecord* const unsent = drive.firstUnsent();
    QJsonValue first;
    if (unsent != nullptr)
        first = QJsonObject{{QStringLiteral("number"), static_cast<qint64>(unsent->number)},
            {QStringLiteral("dateTime"), jsonvalues::time(unsent->dateTime)}};
    return {{QStringLiteral("reachable"), desk.device().state().isOperatorReachable},
        {QStringLiteral("queue"), drive.queueLength()}, {QStringLiteral("firstUnsent"), first}};
}

QJsonObject settings(const Desk& desk)
{
    QJsonObject named;
    const QMap<QString, QString>& settings = desk.device().settings().all();
    for (auto setting = settings.cbegin(); setting != settings.cend(); ++setting)
        named[setting.key()] = setting.value();
    QJsonArray numbered;
    const auto parameters = desk.device().parameters().values();
    for (auto value = parameters.cbegin(); value != parameters.cend(); ++value)
        numbered.append(QJsonObject{{QStringLiteral("number"), value.key().first},
            {QStringLiteral("row"), value.key().second}, {QStringLiteral("text"), value.value()}});
    return {{QStringLiteral("settings"), named}, {QStringLiteral("parameters"), numbered}};
}

} // namespace emulator::panel::stateview
