#pragma once

#include "trace/frame.h"

#include <QList>

/// Frames as they stand on a line, made for the tests by hand.
namespace frames {

inline QByteArray checked(const QByteArray& body)
{
    char check = 0;
    for (const char byte : body)
        check = static_cast<char>(check ^ byte);
    return '\x02' + body + QByteArray(1, check).toHex().toUpper();
}

/// Fields with commas between them.
inline QByteArray request(char id, const char* code, QByteArray fields = {})
{
    return checked("QZXW" + QByteArray(1, id) + code + fields.replace(',', '\x1C') + '\x03');
}

inline QByteArray answer(char id, const char* code, QByteArray fields = {}, const char* result = "00")
{
    return checked(QByteArray(1, id) + code + result + fields.replace(',', '\x1C') + '\x03');
}

inline QByteArray xmlRequest(const char* id, int command, const QByteArray& tree = {})
{
    return "<?xml version=\"1.0\"?>\n<ArmRequest><RequestBody><RequestId>" + QByteArray(id)
        + "</RequestId><DateTime>2026-03-01 09:00:00</DateTime><Command>" + QByteArray::number(command)
        + "</Command></RequestBody><RequestData><![CDATA[" + tree + "]]></RequestData></ArmRequest>\n";
}

inline QByteArray xmlAnswer(const char* id, int command, const QByteArray& tree = {})
{
    return "<ArmResponse><ResponseBody><RequestId>" + QByteArray(id) + "</RequestId><Command>"
        + QByteArray::number(command) + "</Command><Result>0</Result></ResponseBody><ResponseData><![CDATA["
        + tree + "]]></ResponseData></ArmResponse>";
}

inline trace::Frame toRegister(const QByteArray& bytes)
{
    return {0, 1, trace::Direction::ToRegister, bytes};
}

inline trace::Frame toHost(const QByteArray& bytes)
{
    return {0, 1, trace::Direction::ToHost, bytes};
}

inline trace::Trace traceOf(const QList<trace::Frame>& list, bool isMasked = false)
{
    trace::Trace trace;
    trace.frames = list;
    trace.isMasked = isMasked;
    return trace;
}

} // namespace frames
