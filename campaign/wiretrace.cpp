#include "wiretrace.h"

#include "trace/hexframe.h"
#include "trace/signs.h"
#include "trace/traceline.h"

#include <QHash>
#include <QRegularExpression>

void WireTrace::feed(const QByteArray& text)
{
    m_rest += text;
    for (qsizetype end = m_rest.indexOf('\n'); end >= 0; end = m_rest.indexOf('\n')) {
        readLine(m_rest.left(end));
        m_rest.remove(0, end + 1);
    }
}

void WireTrace::readLine(const QByteArray& line)
{
    QString fault;
    const std::optional<trace::Frame> frame = trace::traceline::parse(line, fault);
    if (!frame) {
        m_isReady = m_isReady || line.contains(": ready on ");
        m_other += line + '\n';
        return;
    }
    ++m_lines;
    if (frame->direction == trace::Direction::ToHost)
        return readAnswer(frame->bytes);
    if (frame->bytes.startsWith(trace::startOfText))
        m_command = trace::hexframe::parse(frame->bytes, frame->direction).command;
    if (m_command == "20")
        m_openingLine = m_lines;
    m_hasClosing = m_hasClosing || m_command == "22" || frame->bytes.contains("<Command>8</Command>");
}

void WireTrace::readAnswer(const QByteArray& bytes)
{
    static const QRegularExpression sign(QStringLiteral("<pa n=\"1077\" t=\"1\">(\\d{10})</pa>"));
    const QRegularExpressionMatch match = sign.match(QString::fromUtf8(bytes));
    if (match.hasMatch())
        m_signs.append(match.captured(1).toLatin1());
    const bool isHex = bytes.startsWith(trace::startOfText);
    if (!isHex && !bytes.contains("</ArmResponse>"))
        return;
    const trace::HexFrame answer
        = isHex ? trace::hexframe::parse(bytes, trace::Direction::ToHost) : trace::HexFrame();
    if (answer.answerCode == "00")
        m_answered = after(answer.command, m_answered);
    m_command.clear();
    m_isClosingAnswered = m_hasClosing;
}

std::optional<WireTrace::Progress> WireTrace::underWay() const
{
    return after(m_command, m_answered);
}

std::optional<WireTrace::Progress> WireTrace::after(
    const QByteArray& command, const std::optional<Progress>& before)
{
    static const QHash<QByteArray, int> phases{
        {"20", 1}, {"30", 3}, {"34", 5}, {"35", 7}, {"36", 7}, {"22", 0}, {"23", 0}};
    if (!phases.contains(command))
        return before;
    Progress next{phases.value(command), before ? before->positions : 0};
    if (command == "30")
        ++next.positions;
    else if (next.phase <= 1)
        next.positions = 0;
    return next;
}
