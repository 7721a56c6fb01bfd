#include "xml/protocol.h"

#include "xml/commandtable.h"
#include "xml/envelope.h"

namespace emulator {

namespace {

// Longer than a request with the greatest picture. A longer one is refused once its end has come.
constexpr qsizetype longestRequest = 1'000'000;
// No request at all: nothing of it is kept.
constexpr qsizetype mostBytes = 64'000'000;
constexpr qint64 longestPauseInRequest = 1000;
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
    return m_buffer.isEmpty() || milliseconds() - m_lastByteAt > longestPauseInRequest;
}

void XmlProtocol::receive(const QByteArray& bytes)
{
    if (isIdle() || m_buffer.size() > mostBytes)
        m_buffer.clear();
    m_lastByteAt = milliseconds();
    // The end may have begun with the bytes before.
    qsizetype searched = qMax<qsizetype>(0, m_buffer.size() - xmlenvelope::requestEnd.size());
    m_buffer += bytes;
    for (;;) {
        const qsizetype begin = m_buffer.indexOf('<');
        m_buffer.remove(0, begin < 0 ? m_buffer.size() : begin);
        const qsizetype end = m_buffer.indexOf(xmlenvelope::requestEnd, searched);
        if (end < 0)
            return;
        const QByteArray document = m_buffer.left(end + xmlenvelope::requestEnd.size());
        m_buffer.remove(0, document.size());
        searched = 0;
        handle(document);
    }
}

void XmlProtocol::handle(const QByteArray& document)
{
    const Fault fault = beginExchange();
    if (fault.mode == FaultMode::Silence)
        return;
    XmlRequest request;
    const bool isTooLong = document.size() > longestRequest;
    XmlVerdict verdict = xmlenvelope::read(document, request);
    if (verdict.isGood() && isTooLong)
        verdict = XmlVerdict::badRequest(QStringLiteral("ArmRequest"));
    if (!verdict.isGood() && !m_settings.isOn(QStringLiteral("POS.Transport.ResponseOnError")))
        return;
    const XmlAnswer answer = verdict.isGood() ? run(request) : XmlAnswer(verdict);
    deliver(document, xmlenvelope::answer(request.id, request.command, device().now(), answer), fault);
}

XmlAnswer XmlProtocol::run(const XmlRequest& request)
{
    const XmlCommand* const command = XmlCommand::find(request.command);
    if (command == nullptr)
        return XmlVerdict::unknownCommand();
    if (command->rule.has_value() != request.data.has_value())
        return XmlVerdict::badValue(QStringLiteral("RequestData"));
    const XmlNode data = request.data.value_or(XmlNode());
    const XmlVerdict verdict = command->rule ? command->rule->check(data) : XmlVerdict();
    return verdict.isGood() ? command->handler({device(), m_settings}, data) : XmlAnswer(verdict);
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

} // namespace emulator
