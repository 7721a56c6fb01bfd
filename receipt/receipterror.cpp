#include "receipterror.h"

#include "receipttr.h"
#include "showntext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

namespace receipt {

namespace {

constexpr qsizetype longestShown = 60;

QString plainText(const QJsonValue& value)
{
    if (value.isString())
        return value.toString();
    if (value.isUndefined() || value.isObject() || value.isArray())
        return {};
    const QByteArray array = QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
    return QString::fromLatin1(array.mid(1, array.size() - 2));
}

/// A text in quotes, a long one its beginning.
QString shownValue(const QJsonValue& value)
{
    const QString text = plainText(value);
    if (!value.isString())
        return text;
    const QString shown = shownText(text.left(longestShown));
    return QStringLiteral("\"%1\"").arg(text.size() > longestShown ? shown + QStringLiteral("...") : shown);
}

/// items[2].price: must be a number (given: "abc")
QString message(const QString& path, const QString& reason, const QJsonValue& given)
{
    const QString text = path.isEmpty() ? reason : path + QStringLiteral(": ") + reason;
    const QString value = shownValue(given);
    return shownText(value.isEmpty() ? text : text + tr(" (given: %1)").arg(value));
}

std::string message(const QList<ReceiptError>& errors, const QList<Finding>& besides)
{
    QStringList texts;
    for (const ReceiptError& error : errors)
        texts.append(QString::fromUtf8(error.what()));
    for (const Finding& finding : besides) {
        if (finding.severity == Finding::Error)
            texts.append(finding.text());
    }
    return texts.join(QStringLiteral("; ")).toStdString();
}

} // namespace

ReceiptError::ReceiptError(const QString& path, const QString& reason, const QJsonValue& given)
    : std::runtime_error(message(path, reason, given).toStdString())
    , m_path(path)
    , m_reason(reason)
    , m_given(given)
    , m_findings({{Finding::Error, path, plainText(given), reason}})
{
}

ReceiptError::ReceiptError(const QList<ReceiptError>& errors, const QList<Finding>& besides)
    : std::runtime_error(message(errors, besides))
    , m_path(errors.constFirst().m_path)
    , m_reason(errors.constFirst().m_reason)
    , m_given(errors.constFirst().m_given)
{
    for (const ReceiptError& error : errors)
        m_findings += error.m_findings;
    m_findings += besides;
}

QString ReceiptError::givenText() const
{
    return plainText(m_given);
}

} // namespace receipt
