#include "checkcommand.h"

#include "documentanswer.h"
#include "findingsjson.h"
#include "frctltr.h"
#include "judgedreceipt.h"
#include "receipterror.h"
#include "receipttexts.h"
#include "showntext.h"

#include <QJsonArray>
#include <QMap>
#include <QRegularExpression>

#include <algorithm>
#include <tuple>

namespace frctl {

namespace {

using receipt::Finding;
using receipt::Protocol;

struct ToldFinding
{
    Finding finding;
    QStringList over;
};

struct CheckedText
{
    ReceiptText source;
    QList<ToldFinding> findings;
    /// The protocols that it may be issued over.
    QStringList acceptedOver;
};

bool isError(const Finding& finding)
{
    return finding.severity == Finding::Error;
}

QList<Finding> cashierFindings(const JudgedReceipt& judged)
{
    if (!judged.cashier.name.isEmpty())
        return {};
    return {{Finding::Warning, QStringLiteral("operator"), {},
        tr("is missing: to be issued, the receipt needs the cashier of --cashier")}};
}

/// At the sale the register tells which it has.
QList<Finding> taxSystemFindings(const receipt::Receipt& receipt)
{
    if (receipt.document.getTaxSystem() != hw::fr::common::TaxSystemNone)
        return {};
    return {{Finding::Warning, QStringLiteral("taxationType"), {},
        tr("is missing: a receipt without it is not issued where several tax systems are registered")}};
}

/// A receipt in a line of its own has one line for those who read it, the file has more.
QList<Finding> inPlace(QList<Finding> findings, int line)
{
    //: What is taken out of "line 1: ..." and of "..., line 1; ..." as the receipt library says them.
    const QRegularExpression first(tr("^line 1: |, line 1(?=;)"));
    for (Finding& finding : findings) {
        if (line > 0)
            finding.reason.remove(first);
    }
    return findings;
}

QList<Finding> findingsOf(const ReceiptText& source, const Options& options, Protocol protocol)
{
    if (!source.fault.isEmpty())
        return {{Finding::Error, {}, {}, source.fault}};
    try {
        const JudgedReceipt judged = judgedReceipt(source.text, options, protocol);
        return judged.checked.findings + cashierFindings(judged) + taxSystemFindings(judged.checked.receipt);
    } catch (const receipt::ReceiptError& error) {
        return inPlace(error.findings(), source.line);
    }
}

using FindingKey = std::tuple<Finding::Severity, QString, QString, QString>;

/// What is found over several protocols is told once.
class FindingList
{
public:
    void add(const QList<Finding>& findings, const QString& protocol)
    {
        for (const Finding& finding : findings) {
            const FindingKey key{finding.severity, finding.path, finding.given, finding.reason};
            if (!m_places.contains(key)) {
                m_places.insert(key, m_findings.size());
                m_findings.append({finding, {}});
            }
            QStringList& over = m_findings[m_places.value(key)].over;
            if (!over.contains(protocol))
                over.append(protocol);
        }
    }

    const QList<ToldFinding>& findings() const { return m_findings; }

private:
    QList<ToldFinding> m_findings;
    QMap<FindingKey, qsizetype> m_places;
};

CheckedText checkedText(const ReceiptText& source, const Options& options)
{
    FindingList all;
    QStringList acceptedOver;
    for (const Protocol protocol : options.receiptProtocols()) {
        QList<Finding> findings = findingsOf(source, options, protocol);
        for (Finding& finding : findings)
            finding.severity = options.strict ? Finding::Error : finding.severity;
        if (std::none_of(findings.cbegin(), findings.cend(), isError))
            acceptedOver.append(receipt::protocolName(protocol));
        all.add(findings, receipt::protocolName(protocol));
    }
    return {source, all.findings(), acceptedOver};
}

/// Says what was found as compilers do, so that editors find the place; counts it, too.
class CheckReport
{
public:
    /// How many protocols were asked for.
    explicit CheckReport(qsizetype protocols)
        : m_protocols(protocols)
    {
    }

    void add(const CheckedText& checked)
    {
        QJsonArray errors;
        QJsonArray warnings;
        for (const ToldFinding& told : checked.findings) {
            m_output.lines.append(line(checked.source, told));
            (isError(told.finding) ? errors : warnings).append(json(told));
        }
        if (checked.source.fault.isEmpty()) {
            ++m_checked;
            m_refused += errors.isEmpty() ? 0 : 1;
        } else {
            ++m_unusable;
        }
        m_warned += warnings.isEmpty() ? 0 : 1;
        m_receipts.append(QJsonObject{{QStringLiteral("file"), checked.source.file},
            {QStringLiteral("line"), checked.source.line == 0 ? QJsonValue() : checked.source.line},
            {QStringLiteral("acceptedOver"), QJsonArray::fromStringList(checked.acceptedOver)},
            {QStringLiteral("errors"), errors}, {QStringLiteral("warnings"), warnings}});
    }

    Output output()
    {
        m_output.lines.append(tr("%1 checked: %2 with errors, %3 with warnings")
                                  .arg(m_checked == 1 ? tr("1 receipt") : tr("%1 receipts").arg(m_checked))
                                  .arg(m_refused)
                                  .arg(m_warned));
        if (m_unusable > 0)
            m_output.lines.append(tr("files that have no receipt: %1").arg(m_unusable));
        m_output.json = {{QStringLiteral("checked"), m_checked}, {QStringLiteral("refused"), m_refused},
            {QStringLiteral("unusable"), m_unusable}, {QStringLiteral("receipts"), m_receipts}};
        m_output.status = m_refused + m_unusable == 0 ? ExitSuccess : ExitUsage;
        return m_output;
    }

private:
    /// Empty where it makes no difference.
    QString protocol(const ToldFinding& told) const
    {
        return told.over.size() == m_protocols ? QString() : told.over.constFirst();
    }

    QString line(const ReceiptText& source, const ToldFinding& told) const
    {
        QString text = receipt::shownText(source.file);
        if (source.line > 0)
            text += QStringLiteral(":%1").arg(source.line);
        text += isError(told.finding) ? tr(": error") : tr(": warning");
        if (const QString over = protocol(told); !over.isEmpty())
            text += QStringLiteral(" (%1)").arg(over);
        return text + QStringLiteral(": ") + told.finding.text();
    }

    QJsonObject json(const ToldFinding& told) const
    {
        QJsonObject json = sale::findingJson(told.finding);
        json.insert(QStringLiteral("protocol"), sale::textOrNull(protocol(told)));
        return json;
    }

    const qsizetype m_protocols;
    Output m_output;
    QJsonArray m_receipts;
    int m_checked = 0;
    int m_refused = 0;
    int m_unusable = 0;
    int m_warned = 0;
};

Output checkReceipts(const Options& options)
{
    CheckReport report(options.receiptProtocols().size());
    for (const QString& fileName : options.arguments) {
        for (const ReceiptText& source : receiptTexts(fileName))
            report.add(checkedText(source, options));
    }
    return report.output();
}

} // namespace

Task prepareCheck(const Options& options)
{
    return alone([options] { return checkReceipts(options); });
}

} // namespace frctl
