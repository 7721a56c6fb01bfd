#include "textcheck.h"

#include "errors.h"
#include "frctltr.h"
#include "plaintext.h"
#include "printertext.h"

namespace frctl {

using receipt::Finding;

QString TextCheck::line(const QString& path, const QString& text, int limit)
{
    if (const std::optional<QString> fault = receipt::textFault(text)) {
        m_findings.append({Finding::Error, path, text, *fault});
        return text;
    }
    if (!m_options.isHex())
        return text;
    const receipt::PrinterText printed = receipt::printerText(text, limit);
    if (!printed.isWhole())
        m_findings.append({Finding::Warning, path, text, printed.warning()});
    return printed.text;
}

QStringList TextCheck::printedLines(const QString& fileName, const QStringList& lines)
{
    for (qsizetype i = 0; i < lines.size() && !m_options.isHex(); ++i) {
        if (const std::optional<QString> fault = receipt::printerCommandFault(lines.at(i)))
            m_findings.append(
                {Finding::Error, QStringLiteral("%1:%2").arg(fileName).arg(i + 1), lines.at(i), *fault});
    }
    return this->lines(fileName, lines);
}

QStringList TextCheck::keptLines(const QString& fileName, const QStringList& lines)
{
    const QStringList result = this->lines(fileName, lines);
    for (qsizetype i = 0; i < result.size() && m_options.isHex(); ++i)
        keptText(QStringLiteral("%1:%2").arg(fileName).arg(i + 1), result.at(i), {}, result.at(i));
    return result;
}

void TextCheck::keptText(
    const QString& path, const QString& text, const std::optional<int>& greatest, const QString& shown)
{
    // Of the font in which the registers print such lines.
    constexpr int printedLine = 44;
    const int longest = greatest.value_or(printedLine);
    if (text.size() <= longest)
        return;
    const QString whose = greatest ? tr("the register takes %1") : tr("a printed line has %1");
    const QString reason = tr("has %1 characters, ").arg(text.size()) + whose.arg(longest);
    m_findings.append({Finding::Warning, path, shown, reason + tr("; is sent as it stands")});
}

QStringList TextCheck::lines(const QString& fileName, const QStringList& lines)
{
    QStringList result;
    for (const QString& text : lines)
        result.append(line(QStringLiteral("%1:%2").arg(fileName).arg(result.size() + 1), text));
    return result;
}

void TextCheck::finish() const
{
    settleFindings(m_options, QStringLiteral("UsageError"), m_findings);
}

void settleFindings(const Options& options, const QString& exceptionName, const QList<Finding>& findings)
{
    QList<Finding> errors;
    QList<Finding> warnings;
    for (const Finding& finding : findings)
        (options.strict || finding.severity == Finding::Error ? errors : warnings).append(finding);
    options.warnings->add(warnings);
    if (!errors.isEmpty())
        throw CheckError(exceptionName, errors);
}

} // namespace frctl
