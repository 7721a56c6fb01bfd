#include "trace/hostplayer.h"

#include "trace/codepage.h"
#include "trace/hexframe.h"
#include "trace/signs.h"
#include "trace/tracetr.h"
#include "trace/xmldocument.h"

#include <QUuid>

#include <algorithm>

namespace trace {

namespace {

const QByteArray factoryPassword = "QZXW";
const QByteArray startOfWork = "00";
const QByteArray readClock = "A7";

} // namespace

HostPlayer::HostPlayer(const Trace& trace, const QByteArray& password)
    : m_isMasked(trace.hasStandIns())
    , m_password(password)
    , m_exchanges(exchangesOf(trace))
{
}

bool HostPlayer::isHex() const
{
    return m_exchanges.at(m_next).meaning.protocol == QStringLiteral("HEX");
}

QByteArray HostPlayer::nextRequest()
{
    const Exchange& exchange = m_exchanges.at(m_next);
    m_sent = exchange.request;
    if (m_sent.bytes.startsWith(startOfText))
        m_sent.bytes = hexRequest(exchange);
    else if (!isHex())
        m_sent.bytes = xmldocument::withId(m_sent.bytes, QUuid::createUuid().toByteArray());
    return m_sent.bytes;
}

QByteArray HostPlayer::hexRequest(const Exchange& exchange)
{
    // As drivers count them.
    constexpr char first = 0x20;
    constexpr unsigned char end = 0xFE;
    ++m_hexId;
    if (static_cast<unsigned char>(m_hexId) >= end)
        m_hexId = first;
    QByteArray bytes = exchange.request.bytes;
    bytes[hexframe::idPosition(Direction::ToRegister)] = m_hexId;
    const hexframe::Place place = hexframe::passwordPlace;
    const QByteArray recorded = bytes.mid(place.start, place.size);
    if (m_password.size() == place.size)
        bytes.replace(place.start, place.size, m_password);
    else if (m_isMasked && recorded == standInCp866(recorded))
        bytes.replace(place.start, place.size, factoryPassword);
    const QList<hexframe::Place> places = hexframe::fieldPlaces(bytes, Direction::ToRegister);
    const bool isStart = exchange.meaning.code == QLatin1String(startOfWork);
    for (qsizetype index = 0; isStart && index < std::min(places.size(), m_clock.size()); ++index) {
        if (m_clock.at(index).size() == places.at(index).size)
            bytes.replace(places.at(index).start, places.at(index).size, m_clock.at(index));
    }
    return hexframe::withCheckOf(bytes, exchange.request.bytes);
}

bool HostPlayer::receive(const QByteArray& bytes)
{
    for (const QByteArray& piece : m_framer.feed(bytes)) {
        const Frame frame{0, 1, Direction::ToHost, piece};
        if (endsExchange(frame)) {
            finish(&frame);
            return true;
        }
    }
    return false;
}

bool HostPlayer::endsExchange(const Frame& frame)
{
    if (frame.bytes == m_sent.bytes)
        return false;
    const Meaning answer = Decoder().decode(frame);
    // The picture goes out when the register is ready for it.
    const bool isPictureNext = m_exchanges.value(m_next + 1).meaning.kind == Meaning::Kind::Picture;
    if (answer.kind == Meaning::Kind::Acknowledge)
        return isPictureNext;
    if (answer.kind != Meaning::Kind::Answer)
        return false;
    const bool isPicture = m_exchanges.at(m_next).meaning.kind == Meaning::Kind::Picture;
    return isPicture || answer.id == Decoder().decode(m_sent).id;
}

void HostPlayer::giveUp()
{
    finish(nullptr);
}

void HostPlayer::finish(const Frame* living)
{
    const Exchange& exchange = m_exchanges.at(m_next);
    compare(exchange.answer(), living != nullptr && living->bytes.size() > 1 ? living : nullptr);
    m_lastAnswer = living == nullptr ? Meaning() : meaningOf(m_sent, *living);
    if (living != nullptr && exchange.meaning.code == QLatin1String(readClock))
        m_clock = hexframe::parse(living->bytes, Direction::ToHost).fields;
    ++m_next;
}

Meaning HostPlayer::meaningOf(const Frame& request, const Frame& answer) const
{
    Mask mask;
    Decoder decoder;
    Frame comparable = answer;
    if (m_isMasked) {
        mask.masked(request);
        comparable.bytes = mask.masked(answer);
    }
    decoder.decode(request);
    const Meaning meaning = decoder.decode(comparable);
    return m_isMasked ? meaning.withoutPeople() : meaning;
}

void HostPlayer::compare(const Frame* recorded, const Frame* living)
{
    const QString where = QStringLiteral("%1 %2: ").arg(m_next + 1).arg(title());
    if ((recorded == nullptr) != (living == nullptr)) {
        m_differences.append(where + (living == nullptr ? tr("no answer") : tr("an answer, expected none")));
        return;
    }
    if (recorded == nullptr)
        return;
    const Meaning expected = meaningOf(m_exchanges.at(m_next).request, *recorded);
    const Meaning told = meaningOf(m_sent, *living);
    m_isRefused = m_isRefused || (expected.error.isEmpty() && !told.error.isEmpty());
    for (const QString& difference : told.differencesFrom(expected))
        m_differences.append(where + difference);
}

} // namespace trace
