#include "xml/protocol.h"

#include <algorithm>

namespace emulator {

namespace {

// Longer than a request with the greatest picture.
constexpr qsizetype longestRequest = 1'000'000;
constexpr qint64 longestPause = 1000;
constexpr qint64 pauseBetweenAnswers = 200;
const QString foreignId = QStringLiteral("{00000000-0000-4000-8000-000000000000}");

} // namespace

XmlProtocol::XmlProtocol(Register& device, Outbox& outbox, const Clock& clock)
    : Protocol(device, outbox, clock)
    , m_settings(device)
{
}

bool XmlProtocol::isIdle() const
{
    return m_buffer.isEmpty() || milliseconds() - m_lastByteAt > longestPause;
}

void XmlProtocol::receive(const QByteArray& bytes)
{
    if (isIdle() || m_buffer.size() > longestRequest)
        m_buffer.clear();
    m_lastByteAt = milliseconds();
    m_buffer += bytes;
    for (;;) {
        const qsizetype begin = m_buffer.indexOf('<');
        m_buffer.remove(0, begin < 0 ? m_buffer.size() : begin);
        const qsizetype end = m_buffer.indexOf(xmlenvelope::requestEnd);
        if (end < 0)
            return;
        const QByteArray document = m_buffer.left(end + xmlenvelope::requestEnd.size());
        m_buffer.remove(0, document.size());
        handle(document);
    }
}

void XmlProtocol::handle(const QByteArray& document)
{
    const Fault fault = beginExchange();
    if (fault.mode == FaultMode::Silence)
        return;
    XmlRequest request;
    const XmlVerdict verdict = xmlenvelope::read(document, request);
    if (!verdict.isGood() && !m_settings.isOn(QStringLiteral("POS.Transport.ResponseOnError")))
        return;
    const XmlAnswer answer = verdict.isGood() ? run(request) : XmlAnswer(verdict);
    deliver(document, xmlenvelope::answer(request.id, request.command, device().now(), answer), fault);
}

XmlAnswer XmlProtocol::run(const XmlRequest& request)
{
    const auto found = std::find_if(commands().cbegin(), commands().cend(),
        [&request](const Command& command) { return command.code == request.command; });
    if (found == commands().cend())
        return XmlVerdict::unknownCommand();
    if (found->rule.has_value() != request.data.has_value())
        return XmlVerdict::badValue(QStringLiteral("RequestData"));
    const XmlNode data = request.data.value_or(XmlNode());
    const XmlVerdict verdict = found->rule ? found->rule->check(data) : XmlVerdict();
    return verdict.isGood() ? (this->*found->handler)(data) : XmlAnswer(verdict);
}

QByteArray XmlProtocol::foreignAnswer(const QByteArray&) const
{
    return xmlenvelope::answer(foreignId, 0, device().now(), XmlVerdict());
}

QByteArray XmlProtocol::damagedAnswer(const QByteArray& answer) const
{
    const QByteArray begin = QByteArrayLiteral("<Result>");
    const qsizetype at = answer.indexOf(begin) + begin.size();
    return answer.left(at) + answer.mid(answer.indexOf('<', at));
}

QByteArray XmlProtocol::noise() const
{
    return QByteArrayLiteral("\xFF\x7F\x00U\xAA");
}

qint64 XmlProtocol::pauseAfterForeign() const
{
    return pauseBetweenAnswers;
}

const QList<XmlProtocol::Command>& XmlProtocol::commands()
{
    using Rule = XmlRule;
    const auto cashier = Rule::leaf("1021", XmlType::Text);
    const auto inn = Rule::optionalLeaf("1203", XmlType::Text);
    constexpr auto number = XmlType::Integer;
    static const QList<Command> list{
        {2, &XmlProtocol::state, {}},
        {4, &XmlProtocol::openShift, Rule::tree("2", {cashier, inn})},
        {6, &XmlProtocol::closeShift, Rule::tree("5", {cashier, inn})},
        {8, &XmlProtocol::receipt, receiptRule()},
        {12, &XmlProtocol::printAccounting, Rule::tree("21", {cashier})},
        {16, &XmlProtocol::printStored, Rule::tree("100000", {Rule::leaf("1040", number)})},
        {18, &XmlProtocol::changeRegistration,
            Rule::tree("11", {cashier, Rule::leaf("1205", number), Rule::leaf("1062", number)})},
        {22, &XmlProtocol::time, {}},
        {24, &XmlProtocol::setTime, Rule::tree("200001", {Rule::leaf("DateTime", XmlType::DateTime)})},
        {28, &XmlProtocol::printLast, {}},
        {30, &XmlProtocol::textDocument, Rule::tree("200003", {Rule::leaf("NonFiscalText", XmlType::Text)})},
        {36, &XmlProtocol::openDrawer, {}},
        {38, &XmlProtocol::moneyDocument,
            Rule::tree("200007",
                {cashier, Rule::leaf("CashSumm", XmlType::Sum), Rule::leaf("MoneyOperationType", number),
                    Rule::optionalLeaf("HeaderText", XmlType::Text)})},
        {40, &XmlProtocol::counters, {}},
        {44, &XmlProtocol::shiftState, {}},
        {46, &XmlProtocol::printTotals, Rule::tree("200015", {cashier})},
        {50, &XmlProtocol::taxSystems, {}},
        {52, &XmlProtocol::drawerState, {}},
        {54, &XmlProtocol::settings, Rule::openTree("200004", true)},
        {56, &XmlProtocol::setSettings, Rule::openTree("200005", true)},
        {58, &XmlProtocol::information, {}},
        {76, &XmlProtocol::checkMarking,
            Rule::tree("200017",
                {Rule::leaf("1023", XmlType::Thousandths), Rule::leaf("2000", XmlType::Text),
                    Rule::leaf("2003", number), Rule::leaf("2102", number), Rule::leaf("2108", number),
                    Rule::openTree("1163", true)})},
        {90, &XmlProtocol::clearMarking, {}},
    };
    return list;
}

} // namespace emulator
