#include "trace/traceline.h"

#include "trace/tracetr.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTimeZone>

namespace trace::traceline {

namespace {

constexpr qint64 perMillisecond = 1000;

QByteArray timeText(qint64 microseconds)
{
    const QDateTime utc = QDateTime::fromMSecsSinceEpoch(microseconds / perMillisecond);
    const QDateTime local = utc.toOffsetFromUtc(utc.offsetFromUtc());
    const QString text = local.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz"));
    const QString offset = local.offsetFromUtc() == 0
        ? QStringLiteral("+00:00")
        : local.toString(Qt::ISODate).right(QStringLiteral("+00:00").size());
    return QStringLiteral("%1%2%3")
        .arg(text)
        .arg(microseconds % perMillisecond, 3, 10, QLatin1Char('0'))
        .arg(offset)
        .toLatin1();
}

qint64 timeOf(const QRegularExpressionMatch& match)
{
    const QDateTime clock
        = QDateTime::fromString(match.captured(1), QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz"));
    const QTime offset = QTime::fromString(match.captured(4), QStringLiteral("HH:mm"));
    const qint64 milliseconds = offset.msecsSinceStartOfDay();
    const qint64 shift = match.captured(3).startsWith(QLatin1Char('-')) ? milliseconds : -milliseconds;
    if (!clock.isValid() || !offset.isValid())
        return -1;
    const QDateTime utc(clock.date(), clock.time(), QTimeZone::utc());
    return (utc.toMSecsSinceEpoch() + shift) * perMillisecond + match.captured(2).toInt();
}

} // namespace

QByteArray head(bool isMasked)
{
    // untranslated: the format
    return isMasked ? "# frtrace 1 masked\n" : "# frtrace 1 full\n";
}

bool isHead(const QByteArray& line)
{
    return line == head(true).trimmed() || line == head(false).trimmed();
}

bool isMaskedHead(const QByteArray& line)
{
    return line == head(true).trimmed();
}

QByteArray note(const QString& text)
{
    return "# " + text.simplified().toUtf8() + '\n';
}

QByteArray frame(const Frame& frame, const QString& meaning)
{
    const char* const direction = frame.direction == Direction::ToRegister ? " > " : " < ";
    return timeText(frame.microseconds) + ' ' + QByteArray::number(frame.connection) + direction
        + frame.bytes.toHex().toUpper() + ' ' + meaning.toUtf8() + '\n';
}

std::optional<Frame> parse(const QByteArray& line, QString& error)
{
    static const QRegularExpression form(
        QStringLiteral("^(\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3})(\\d{3})([+-](\\d\\d:\\d\\d)) "
                       "([1-9]\\d{0,5}) ([<>]) ([0-9A-F]+)(?: .*)?$"));
    const QRegularExpressionMatch match = form.match(QString::fromUtf8(line));
    if (!match.hasMatch()) {
        error = tr("is no head, no note, and no frame as TIME CONNECTION > BYTES MEANING");
        return std::nullopt;
    }
    Frame frame;
    frame.microseconds = timeOf(match);
    frame.connection = match.captured(5).toInt();
    frame.direction = match.captured(6) == QStringLiteral(">") ? Direction::ToRegister : Direction::ToHost;
    const QByteArray digits = match.captured(7).toLatin1();
    if (frame.microseconds < 0)
        error = tr("has no time that there is");
    else if (digits.size() % 2 != 0)
        error = tr("has half a byte at the end of its bytes");
    frame.bytes = QByteArray::fromHex(digits);
    return error.isEmpty() ? std::optional<Frame>(frame) : std::nullopt;
}

bool hasMeaning(const QByteArray& line)
{
    constexpr int columnsBefore = 4;
    return line.count(' ') >= columnsBefore;
}

} // namespace trace::traceline
