#include "xml/protocol.h"

#include "register/refusalwords.h"
#include "register/settingtable.h"
#include "register/tags.h"
#include "xml/answershape.h"
#include "xml/commandtable.h"
#include "xml/envelope.h"
#include "xml/envelopeform.h"
#include "xml/treeform.h"

#include <utility>

namespace emulator {

namespace {

// Longer than a request with the greatest picture. A longer one is refused once its end has come.
constexpr qsizetype longestRequest = 1'000'000;
// No request at all: nothing of it is kept.
constexpr qsizetype mostBytes = 64'000'000;
constexpr qint64 longestPauseInRequest = 1000;
constexpr qint64 pauseBetweenAnswers = 200;
const QByteArray byteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");
const QString foreignId = QStringLiteral("{00000000-0000-4000-8000-000000000000}");

// What a lenient register does not mind.
XmlVerdict judge(const XmlCommand& command, const XmlNode& data)
{
    if (const XmlVerdict verdict = xmltreeform::check(data); !verdict.isGood())
        return verdict;
    const XmlVerdict verdict = command.rule ? command.rule->checkStrictly(data) : XmlVerdict();
    return verdict.isGood() && command.form != nullptr ? command.form(data) : verdict;
}

// A register describes the codes in its own words, which hosts need only for those that they do not know.
XmlVerdict errorOf(const Fault& fault)
{
    const bool noPaper = fault.mode == FaultMode::ShapeCode8;
    const XmlVerdict error = noPaper ? XmlVerdict(1, 8, {}) : XmlVerdict(fault.category, fault.argument, {});
    return {error.category, error.code, QStringLiteral("Ошибка %1").arg(error.code)};
}

} // namespace

XmlProtocol::XmlProtocol(Register& device, Outbox& outbox, const Clock& clock)
    : Protocol(device, outbox, clock)
    , m_settings(device)
{
}

bool XmlProtocol::isIdle() const
{
    return m_buffer.isEmpty() || milliseconds() - m_lastByteAt > longestPauseInRequest;
}

void XmlProtocol::receive(const QByteArray& bytes)
{
    if (!device().isPowered())
        return;
    if (isIdle() || m_buffer.size() > mostBytes)
        m_buffer.clear();
    m_lastByteAt = milliseconds();
    // The end may have begun with the bytes before.
    qsizetype searched = qMax<qsizetype>(0, m_buffer.size() - 2 * xmlenvelope::requestEnd.size());
    m_buffer += bytes;
    for (;;) {
        skip();
        const qsizetype end = xmlenvelope::endOfRequest(m_buffer, searched);
        if (end < 0)
            return;
        const QByteArray document = m_buffer.left(end);
        m_buffer.remove(0, document.size());
        searched = 0;
        const bool isMarked = std::exchange(m_skipped, {}) == byteOrderMark;
        handle(isMarked ? byteOrderMark + document : document);
    }
}

void XmlProtocol::forgetRequest()
{
    m_buffer.clear();
    m_skipped.clear();
}

void XmlProtocol::skip()
{
    const qsizetype begin = m_buffer.indexOf('<');
    const QByteArray dropped = m_buffer.left(begin < 0 ? m_buffer.size() : begin);
    m_skipped = (m_skipped + dropped).right(byteOrderMark.size());
    m_buffer.remove(0, dropped.size());
}

void XmlProtocol::handle(const QByteArray& document)
{
    const Fault fault = beginExchange(document);
    XmlRequest request;
    const XmlVerdict verdict = read(document, request);
    if (fault.mode == FaultMode::Silence)
        return note(exchangeOf(document, request, XmlVerdict()), fault);
    if (fault.isError()) {
        note(exchangeOf(document, request, errorOf(fault)), fault);
        return reply(document, request, errorOf(fault), fault);
    }
    const XmlAnswer answer = verdict.isGood() ? run(request) : XmlAnswer(verdict);
    note(exchangeOf(document, request, answer.verdict), fault);
    if (!verdict.isGood() && !device().settings().isOn(setting::errorAnswers))
        return;
    reply(document, request, answer, fault);
}

void XmlProtocol::reply(
    const QByteArray& document, const XmlRequest& request, const XmlAnswer& answer, const Fault& fault)
{
    deliver(document, xmlenvelope::answer(request.id, request.command, device().now(), answer), fault);
}

XmlVerdict XmlProtocol::read(const QByteArray& document, XmlRequest& request) const
{
    // The id is read in any case: a refusal carries it.
    const XmlVerdict verdict = xmlenvelope::read(document, request);
    if (!m_refusal.isEmpty())
        return XmlVerdict::badRequest(m_refusal);
    if (document.size() > longestRequest)
        return XmlVerdict::badRequest(QStringLiteral("longer than %1 bytes").arg(longestRequest));
    return verdict.isGood() && isStrict() ? xmlenvelopeform::check(document) : verdict;
}

Exchange XmlProtocol::exchangeOf(
    const QByteArray& document, const XmlRequest& request, const XmlVerdict& verdict)
{
    Exchange exchange;
    exchange.protocol = QStringLiteral("XML");
    exchange.command = request.command == 0 ? QString() : QString::number(request.command);
    exchange.request = document;
    if (const XmlCommand* const command = XmlCommand::find(request.command)) {
        exchange.name = QLatin1String(command->name);
        exchange.role = command->role;
    }
    if (!verdict.isGood()) {
        exchange.error = QStringLiteral("%1.%2").arg(verdict.category).arg(verdict.code);
        exchange.reason = verdict.refusal == Refusal::None
            ? verdict.description
            : QStringLiteral("%1: %2").arg(exchange.command, refusalWords(verdict.refusal, device()));
        // A receipt that the paper ends on is stored and answered the same way.
        exchange.isOutcomeUnknown = verdict.code == XmlVerdict(Refusal::NoPaper).code;
    }
    return exchange;
}

XmlAnswer XmlProtocol::run(const XmlRequest& request)
{
    const XmlCommand* const command = XmlCommand::find(request.command);
    if (command == nullptr)
        return XmlVerdict::unknownCommand();
    if (command->rule.has_value() != request.data.has_value())
        return XmlVerdict::badValue(command->rule ? QStringLiteral("no parameters")
                                                  : QStringLiteral("parameters that are not taken"));
    const XmlNode data = request.data.value_or(XmlNode());
    XmlVerdict verdict = command->rule ? command->rule->check(data) : XmlVerdict();
    if (verdict.isGood() && isStrict())
        verdict = judge(*command, data);
    return verdict.isGood() ? command->handler({device(), m_settings, isStrict()}, data) : XmlAnswer(verdict);
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

QByteArray XmlProtocol::shaped(const QByteArray& answer, FaultMode mode) const
{
    return xmlanswershape::apply(answer, mode);
}

qint64 XmlProtocol::pauseAfterForeign() const
{
    return pauseBetweenAnswers;
}

} // namespace emulator
