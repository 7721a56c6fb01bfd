#include "traceview.h"

#include "trace/meaning.h"

#include <QDateTime>
#include <QJsonArray>

#include <unistd.h>

namespace frctl {

namespace {

constexpr qint64 perMillisecond = 1000;
// More of them are easier to read below each other.
constexpr qsizetype mostFieldsInLine = 6;

bool hasColours()
{
    return ::isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR")
        && qEnvironmentVariable("TERM") != QStringLiteral("dumb");
}

const char* colourOf(const trace::Frame& frame, const trace::Meaning& meaning)
{
    if (!meaning.fault.isEmpty() || !meaning.error.isEmpty() || meaning.kind == trace::Meaning::Kind::Unknown)
        return "\x1B[31m";
    if (meaning.isSign())
        return "\x1B[2m";
    return frame.direction == trace::Direction::ToRegister ? "\x1B[36m" : "\x1B[32m";
}

QString coloured(const QString& text, const char* colour)
{
    return hasColours() ? QLatin1String(colour) + text + QStringLiteral("\x1B[0m") : text;
}

QDateTime timeOf(const trace::Frame& frame)
{
    return QDateTime::fromMSecsSinceEpoch(frame.microseconds / perMillisecond);
}

QString arrowOf(const trace::Frame& frame)
{
    return frame.direction == trace::Direction::ToRegister ? QStringLiteral(">") : QStringLiteral("<");
}

QStringList linesOf(const trace::Frame& frame, const trace::Meaning& meaning)
{
    const QString head = QStringLiteral("%1%2 %3 %4 ")
                             .arg(timeOf(frame).toString(QStringLiteral("HH:mm:ss.zzz")))
                             .arg(frame.microseconds % perMillisecond, 3, 10, QLatin1Char('0'))
                             .arg(frame.connection)
                             .arg(arrowOf(frame));
    const char* const colour = colourOf(frame, meaning);
    const QStringList fields = meaning.fieldTexts();
    if (fields.size() <= mostFieldsInLine)
        return {head + coloured(meaning.text(), colour)};
    trace::Meaning title = meaning;
    title.fields.clear();
    QStringList lines{head + coloured(title.text(), colour)};
    for (const QString& field : fields)
        lines.append(QString(4, QLatin1Char(' ')) + field);
    return lines;
}

QJsonObject jsonOf(const trace::Frame& frame, const trace::Meaning& meaning)
{
    QJsonObject json = meaning.json();
    json.insert(QStringLiteral("time"), timeOf(frame).toUTC().toString(Qt::ISODateWithMs));
    json.insert(QStringLiteral("connection"), frame.connection);
    json.insert(QStringLiteral("direction"), arrowOf(frame));
    json.insert(QStringLiteral("bytes"), QString::fromLatin1(frame.bytes.toHex()));
    return json;
}

} // namespace

Output traceView(const trace::Trace& trace)
{
    Output output;
    QJsonArray frames;
    QStringList notes;
    trace::Decoder decoder;
    qsizetype nextNote = 0;
    const auto takeNotes = [&](qsizetype position) {
        for (; nextNote < trace.notes.size() && trace.notes.at(nextNote).position <= position; ++nextNote) {
            notes.append(trace.notes.at(nextNote).text);
            output.lines.append(coloured(QStringLiteral("# ") + trace.notes.at(nextNote).text, "\x1B[33m"));
        }
    };
    for (qsizetype index = 0; index < trace.frames.size(); ++index) {
        takeNotes(index);
        const trace::Frame& frame = trace.frames.at(index);
        const trace::Meaning meaning = decoder.decode(frame);
        output.lines += linesOf(frame, meaning);
        frames.append(jsonOf(frame, meaning));
    }
    takeNotes(trace.frames.size());
    output.json = {{QStringLiteral("masked"), trace.isMasked}, {QStringLiteral("frames"), frames},
        {QStringLiteral("notes"), QJsonArray::fromStringList(notes)}};
    return output;
}

} // namespace frctl
