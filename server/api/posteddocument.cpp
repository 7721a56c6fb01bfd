#include "api/posteddocument.h"

#include "api/plainerrors.h"
#include "documentid.h"
#include "documentkind.h"
#include "findingsjson.h"
#include "http/problem.h"
#include "markentry.h"
#include "movement.h"
#include "receiptcheck.h"
#include "receipterror.h"

#include "jsontext.h"

#include <QJsonDocument>

namespace frserver {

namespace {

using receipt::Finding;

const QString idName = QStringLiteral("id");
const QString returnOfName = QStringLiteral("returnOf");
const QString operatorName = QStringLiteral("operator");
const QString startBeforeName = QStringLiteral("startBefore");

/// Collects what is wrong, so that a client hears of all of it at once.
class Posting
{
public:
    Posting(const QByteArray& body, const PostingRules& rules)
        : m_rules(rules)
    {
        QList<receipt::ReceiptError> errors;
        try {
            m_json = receipt::jsonFromText(body, errors);
        } catch (const receipt::ReceiptError& error) {
            m_findings = error.findings();
            m_isReadable = false;
        }
        for (const receipt::ReceiptError& error : errors)
            m_findings += error.findings();
    }

    void readId(const QString& header)
    {
        if (!m_isReadable)
            return;
        const QJsonValue member = m_json.take(idName);
        if (!member.isUndefined() && !member.isString())
            return fail(idName, QStringLiteral("must be a text"));
        m_document.id = member.isUndefined() ? header : member.toString();
        if (m_document.id.isEmpty())
            return fail(idName,
                QStringLiteral(
                    "is missing: a document has one, here or in Idempotency-Key, the same for every "
                    "attempt"));
        if (!header.isEmpty() && header != m_document.id) {
            fail(idName, QStringLiteral("is another one than that of Idempotency-Key"), m_document.id);
            // The client means one of them alone: what is known of the other one is no answer to it.
            m_document.id.clear();
            return;
        }
        if (!sale::isDocumentId(m_document.id))
            fail(idName, QStringLiteral("has not 8 to 64 of A-Z a-z 0-9 . _ : -"), m_document.id);
    }

    void readStartBefore()
    {
        const QJsonValue value = m_json.take(startBeforeName);
        if (value.isUndefined() || value.isNull()) {
            if (m_rules.startBefore > 0)
                m_document.startWithin = std::chrono::seconds(m_rules.startBefore);
            return;
        }
        if (value.isDouble())
            return readSeconds(value.toDouble());
        const QDateTime time = QDateTime::fromString(value.toString(), Qt::ISODateWithMs);
        // One without a zone would be another moment on another machine.
        if (!time.isValid() || time.timeSpec() == Qt::LocalTime)
            return fail(startBeforeName,
                QStringLiteral("must be seconds from now, or a time with its zone as 2025-03-01T12:00:00Z"),
                value.toString());
        m_document.startBefore = time;
    }

    void readReturnOf()
    {
        const QJsonValue value = m_json.take(returnOfName);
        if (value.isUndefined() || value.isNull())
            return;
        if (m_json.value(QStringLiteral("type")) != documentKindName(sale::DocumentKind::SaleReturn))
            return fail(returnOfName, QStringLiteral("goes with the type sellReturn"));
        m_document.returnOf = value.toString();
        if (m_document.returnOf.isEmpty())
            fail(returnOfName, QStringLiteral("must be the id of the sale whose goods come back"));
    }

    /// What belongs to the posting may be missing, and is no part of the document.
    void takePosting()
    {
        if (m_json.contains(idName))
            readId({});
        readStartBefore();
        readReturnOf();
    }

    void readDocument()
    {
        if (!m_isReadable)
            return;
        const QString type = m_json.value(QStringLiteral("type")).toString();
        if (const auto kind = sale::plainKindOf(type))
            readPlain(*kind, type);
        else
            readReceipt();
    }

    /// A document of another kind is no receipt.
    void requireReceipt()
    {
        if (m_isReadable && sale::plainKindOf(m_document.kind))
            fail(QStringLiteral("type"), QStringLiteral("is no receipt, of which alone there are pictures"),
                m_document.kind);
    }

    QByteArray completedBody() const
    {
        const bool isCompleted = !m_document.returnOf.isEmpty() && m_rules.completed;
        return isCompleted ? m_rules.completed(m_document) : m_document.body;
    }

    const sale::DocumentRequest& document() const { return m_document; }
    const QList<Finding>& findings() const { return m_findings; }

private:
    void readSeconds(double seconds)
    {
        constexpr double longest = 366.0 * 24 * 60 * 60;
        if (seconds < 0.0 || seconds > longest)
            return fail(startBeforeName, QStringLiteral("must be from 0 to 31622400 seconds"),
                QString::number(seconds));
        m_document.startWithin = std::chrono::milliseconds(static_cast<qint64>(seconds * 1000));
    }

    QByteArray body() const { return QJsonDocument(m_json).toJson(QJsonDocument::Compact); }

    void readPlain(sale::PlainDocument::Kind kind, const QString& type)
    {
        if (m_rules.isForPool)
            fail(QStringLiteral("type"), QStringLiteral("is no receipt, which alone a pool takes"), type);
        if (!m_json.contains(operatorName))
            requireCashier();
        for (const receipt::ReceiptError& error : plainErrors(kind, m_json))
            m_findings += error.findings();
        m_document.kind = type;
        m_document.body = body();
    }

    void readReceipt()
    {
        m_document.body = body();
        try {
            const receipt::CheckedReceipt checked
                = receipt::checkedReceipt(completedBody(), {m_rules.protocol, m_rules.now.date()});
            m_findings += checked.findings;
            takeReceipt(checked.receipt);
        } catch (const receipt::ReceiptError& error) {
            m_findings += error.findings();
        }
    }

    /// Of the register, where the document names none.
    void requireCashier()
    {
        if (!m_rules.hasCashier)
            fail(operatorName,
                QStringLiteral("is missing, and the register has no cashier= in the configuration"));
    }

    /// Without its name it would be the usual one of whichever register makes it.
    void requireTaxSystem()
    {
        const QString name = QStringLiteral("taxationType");
        const QString given = m_json.value(name).toString();
        if (!m_rules.taxSystems.isEmpty() && !m_rules.taxSystems.contains(given))
            fail(name,
                QStringLiteral("must be one of the pool's: ") + m_rules.taxSystems.join(QStringLiteral(", ")),
                given);
    }

    void takeReceipt(const receipt::Receipt& receipt)
    {
        const bool isNamed = receipt.cashier && !receipt.cashier->name.isEmpty();
        if (!isNamed)
            requireCashier();
        requireTaxSystem();
        m_document.isPaperless = receipt.document.getPrintMode() == CheckPrintNone;
        m_document.kind = documentKindName(sale::movementOf(receipt).kind);
        m_document.goods = sale::markEntryOf(receipt).marks;
    }

    void fail(const QString& path, const QString& reason, const QString& given = {})
    {
        m_findings.append({Finding::Error, path, given, reason});
    }

    const PostingRules& m_rules;
    QJsonObject m_json;
    bool m_isReadable = true;
    sale::DocumentRequest m_document;
    QList<Finding> m_findings;
};

QString headerId(const http::Request& request)
{
    QByteArray value = request.headers.value("Idempotency-Key").trimmed();
    // A text in quotes by its draft, bare by most clients.
    if (value.size() > 1 && value.startsWith('"') && value.endsWith('"'))
        value = value.sliced(1).chopped(1);
    return QString::fromUtf8(value);
}

void throwErrors(const QList<Finding>& findings)
{
    QList<Finding> errors;
    QList<Finding> warnings;
    for (const Finding& finding : findings)
        (finding.severity == Finding::Error ? errors : warnings).append(finding);
    if (!errors.isEmpty())
        throw wrongDocument(errors, warnings);
}

} // namespace

void PostedDocument::requireRight() const
{
    throwErrors(findings);
}

http::Problem wrongDocument(const QList<Finding>& errors, const QList<Finding>& warnings)
{
    return http::Problem(400, QStringLiteral("document-wrong"), QStringLiteral("The document is wrong"),
        QStringLiteral("Nothing was stored. Correct what errors names; the id may stay."))
        .with(QStringLiteral("errors"), sale::findingsJson(errors))
        .with(QStringLiteral("warnings"), sale::findingsJson(warnings));
}

PostedDocument postedDocument(const http::Request& request, const PostingRules& rules)
{
    Posting posting(request.body, rules);
    posting.readId(headerId(request));
    posting.readStartBefore();
    posting.readReturnOf();
    posting.readDocument();
    return {posting.document(), posting.findings()};
}

QList<Finding> documentFindings(const QByteArray& body, const PostingRules& rules)
{
    Posting posting(body, rules);
    posting.takePosting();
    posting.readDocument();
    return posting.findings();
}

QByteArray receiptToDraw(const QByteArray& body, const PostingRules& rules)
{
    Posting posting(body, rules);
    posting.takePosting();
    posting.readDocument();
    posting.requireReceipt();
    throwErrors(posting.findings());
    return posting.completedBody();
}

} // namespace frserver
