#include "panel/exchangejson.h"

#include "panel/jsonvalues.h"
#include "panel/loggedexchange.h"
#include "trace/meaning.h"

#include <QJsonArray>

namespace emulator::panel::exchangejson {

namespace {

constexpr qsizetype mostBytes = 4096;

// With the offset, which other clocks may have another one of.
QString lineTime(qint64 microseconds)
{
    constexpr qint64 perMillisecond = 1000;
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(microseconds / perMillisecond);
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

QJsonObject frameJson(const LoggedFrame& logged, trace::Decoder& decoder)
{
    const trace::Frame& frame = logged.frame;
    const trace::Meaning meaning = decoder.decode(frame);
    const bool isOut = frame.direction == trace::Direction::ToRegister;
    return {{QStringLiteral("number"), logged.number},
        {QStringLiteral("dateTime"), lineTime(frame.microseconds)},
        {QStringLiteral("direction"), isOut ? QStringLiteral("toRegister") : QStringLiteral("toHost")},
        {QStringLiteral("bytes"), QString::fromLatin1(frame.bytes.left(mostBytes).toHex())},
        {QStringLiteral("size"), frame.bytes.size()}, {QStringLiteral("text"), meaning.text()},
        {QStringLiteral("meaning"), meaning.json()}};
}

QJsonArray warningsJson(const LoggedExchange& exchange)
{
    QJsonArray warnings;
    for (const LoggedExchange::Warning& warning : exchange.warnings)
        warnings.append(
            QJsonObject{{QStringLiteral("kind"), warning.kind}, {QStringLiteral("text"), warning.text}});
    return warnings;
}

} // namespace

QJsonObject whole(const LoggedExchange& logged)
{
    const Exchange& exchange = logged.exchange;
    // An answer is understood by its request, which stands before it.
    trace::Decoder decoder;
    QJsonArray frames;
    for (const LoggedFrame& frame : logged.frames)
        frames.append(frameJson(frame, decoder));
    return {{QStringLiteral("number"), logged.number},
        {QStringLiteral("dateTime"), jsonvalues::time(logged.dateTime)},
        {QStringLiteral("protocol"), exchange.protocol}, {QStringLiteral("command"), exchange.command},
        {QStringLiteral("name"), exchange.name},
        {QStringLiteral("error"), jsonvalues::textOrNull(exchange.error)},
        {QStringLiteral("reason"), jsonvalues::textOrNull(exchange.reason)},
        {QStringLiteral("fault"), jsonvalues::textOrNull(exchange.fault)},
        {QStringLiteral("document"), jsonvalues::numberOrNull(logged.hasStored() ? logged.documentAfter : 0)},
        {QStringLiteral("warnings"), warningsJson(logged)}, {QStringLiteral("frames"), frames}};
}

} // namespace emulator::panel::exchangejson
