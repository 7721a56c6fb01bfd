#include "trace/pcapng.h"

#include <QHash>
#include <QtEndian>

#include <algorithm>

namespace trace {

namespace {

enum BlockType : quint32 { Section = 0x0A0D0D0A, Interface = 1, EnhancedPacket = 6 };

// Options that several blocks have.
constexpr quint16 commentOption = 1;
constexpr quint16 nameOption = 2;

constexpr quint16 linkTypeUser0 = 147;
// Analysers refuse files with larger packets; a picture may be one.
constexpr qsizetype largestPacket = qsizetype{256} * 1024;

template <typename Number>
QByteArray little(Number value)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray padded(const QByteArray& bytes)
{
    constexpr qsizetype unit = 4;
    return bytes + QByteArray((unit - bytes.size() % unit) % unit, '\0');
}

QByteArray option(quint16 code, const QByteArray& value)
{
    constexpr qsizetype longest = 0xFFFF;
    const QByteArray text = value.left(longest);
    return little(code) + little(static_cast<quint16>(text.size())) + padded(text);
}

QByteArray comment(const QString& text)
{
    return option(commentOption, text.toUtf8());
}

QByteArray block(BlockType type, const QByteArray& body, const QByteArray& options)
{
    const QByteArray content = body + options + option(0, {});
    constexpr qsizetype frameSize = 12;
    const QByteArray size = little(static_cast<quint32>(content.size() + frameSize));
    return little<quint32>(type) + size + content + size;
}

QByteArray section(const Trace& trace)
{
    constexpr quint32 byteOrder = 0x1A2B3C4D;
    constexpr quint16 major = 1;
    constexpr quint16 minor = 0;
    constexpr qint64 unknownSize = -1;
    QByteArray options = comment(trace.isMasked
            ? QStringLiteral("stand-ins take the place of names, addresses and passwords")
            : QStringLiteral("names, addresses and passwords stand as they are"));
    // A trace without frames has its notes here.
    if (trace.frames.isEmpty()) {
        for (const Note& note : trace.notes)
            options += comment(note.text);
    }
    return block(Section, little(byteOrder) + little(major) + little(minor) + little(unknownSize), options);
}

QByteArray interface(int connection)
{
    constexpr quint16 reserved = 0;
    constexpr quint16 resolutionOption = 9;
    constexpr char microsecond = 6;
    return block(Interface,
        little(linkTypeUser0) + little(reserved) + little(static_cast<quint32>(largestPacket)),
        option(nameOption, "connection " + QByteArray::number(connection))
            + option(resolutionOption, QByteArray(1, microsecond)));
}

QByteArray packet(const Frame& frame, quint32 interfaceIndex, const QByteArray& comments)
{
    constexpr int halfBits = 32;
    constexpr quint16 flagsOption = 2;
    constexpr quint32 inbound = 1;
    constexpr quint32 outbound = 2;
    const auto time = static_cast<quint64>(frame.microseconds);
    const QByteArray bytes = frame.bytes.left(largestPacket);
    return block(EnhancedPacket,
        little(interfaceIndex) + little(static_cast<quint32>(time >> halfBits))
            + little(static_cast<quint32>(time)) + little(static_cast<quint32>(bytes.size()))
            + little(static_cast<quint32>(frame.bytes.size())) + padded(bytes),
        comments + option(flagsOption, little(frame.direction == Direction::ToHost ? inbound : outbound)));
}

/// By the frame that they stand before; the last frame has those behind it, too.
QHash<qsizetype, QByteArray> commentsOf(const Trace& trace)
{
    QHash<qsizetype, QByteArray> comments;
    for (const Note& note : trace.notes)
        comments[std::min(note.position, trace.frames.size() - 1)] += comment(note.text);
    return comments;
}

} // namespace

QByteArray pcapng(const Trace& trace)
{
    const QHash<qsizetype, QByteArray> comments = commentsOf(trace);
    QHash<int, quint32> interfaces;
    QByteArray bytes = section(trace);
    for (qsizetype index = 0; index < trace.frames.size(); ++index) {
        const Frame& frame = trace.frames.at(index);
        if (!interfaces.contains(frame.connection)) {
            interfaces.insert(frame.connection, static_cast<quint32>(interfaces.size()));
            bytes += interface(frame.connection);
        }
        bytes += packet(frame, interfaces.value(frame.connection), comments.value(index));
    }
    return bytes;
}

} // namespace trace
