#include "fieldsieve.h"

#include "fieldtable.h"
#include "printertext.h"
#include "receiptcheck.h"
#include "receipttr.h"

#include <QJsonArray>
#include <QSet>

#include <barcode.h>

namespace receipt {

namespace {

bool isQr(const QJsonValue& type)
{
    return type.isDouble() ? type.toInt() == Barcode::Qr : type.toString() == QLatin1String("QR");
}

bool isOfQr(const FieldCarriage& carriage, const QJsonObject& item)
{
    return carriage.obstacle == FieldCarriage::QrCode && isQr(item.value(QStringLiteral("barcodeType")));
}

bool isBesideWide(const FieldCarriage& carriage, const QJsonValue& value, const QJsonObject& item)
{
    return carriage.obstacle == FieldCarriage::DoubleWidth && value.toBool()
        && item.value(QStringLiteral("doubleWidth")).toBool();
}

/// Walks through a receipt, field by field.
class FieldSieve
{
public:
    FieldSieve(const CheckOptions& options, QList<Finding>& findings)
        : m_options(options)
        , m_findings(findings)
        , m_over(tr("over ") + protocolName(options.protocol))
    {
    }

    QJsonObject object(const QJsonObject& source, const QString& path)
    {
        QJsonObject result;
        const QString prefix = path.isEmpty() ? path : path + QLatin1Char('.');
        for (auto field = source.constBegin(); field != source.constEnd(); ++field) {
            const QJsonValue value = sifted(prefix + field.key(), field.value(), source);
            if (!value.isUndefined())
                result.insert(field.key(), value);
        }
        return result;
    }

    /// To be asked when the whole receipt has been walked through.
    void judgeDrops()
    {
        for (const QString& path : m_options.drop) {
            if (m_dropped.contains(path))
                continue;
            const QString reason = m_carried.contains(path)
                ? tr("is carried %1 and cannot be dropped").arg(m_over)
                : tr("cannot be dropped: no field of this receipt that is not carried %1 has this path")
                      .arg(m_over);
            m_findings.append({Finding::Error, path, {}, reason});
        }
    }

private:
    /// Undefined for what is dropped.
    QJsonValue sifted(const QString& path, const QJsonValue& value, const QJsonObject& owner)
    {
        if (value.isObject())
            return object(value.toObject(), path);
        const FieldRule* const rule = fieldRule(path);
        if (rule != nullptr)
            return field(path, value, owner, *rule);
        return value.isArray() ? elements(value.toArray(),
                   [&](const QString& place, const QJsonValue& element) {
                       return sifted(path + place, element, owner);
                   })
                               : value;
    }

    QJsonValue field(
        const QString& path, const QJsonValue& value, const QJsonObject& owner, const FieldRule& rule)
    {
        const FieldCarriage& carriage = rule.over(m_options.protocol);
        if (carriage.form == FieldCarriage::NotCarried || isOfQr(carriage, owner))
            return withoutCarriage(path, value, QLatin1String(rule.path));
        if (isBesideWide(carriage, value, owner))
            m_findings.append({Finding::Warning, path, {},
                tr("is not printed %1 together with doubleWidth: the line is wide alone").arg(m_over)});
        m_carried.insert(path);
        m_carried.insert(QLatin1String(rule.path));
        if (value.isString())
            return text(path, value.toString(), carriage);
        return value.isArray() ? elements(value.toArray(),
                   [&](const QString& place, const QJsonValue& element) {
                       return element.isString() ? text(path + place, element.toString(), carriage) : element;
                   })
                               : value;
    }

    template <typename Sift>
    QJsonArray elements(const QJsonArray& source, Sift sift)
    {
        QJsonArray result;
        for (const QJsonValue element : source)
            result.append(sift(QStringLiteral("[%1]").arg(result.size()), element));
        return result;
    }

    QJsonValue withoutCarriage(const QString& path, const QJsonValue& value, const QString& rulePath)
    {
        const QString given = value.toVariant().toString();
        if (m_options.drop.contains(path) || m_options.drop.contains(rulePath)) {
            m_dropped.insert(path);
            m_dropped.insert(rulePath);
            m_findings.append(
                {Finding::Warning, path, given, tr("is dropped, since it is not carried ") + m_over});
            return QJsonValue::Undefined;
        }
        m_findings.append({Finding::Error, path, given,
            tr("is not carried %1; it must be dropped to issue the receipt without it").arg(m_over)});
        return value;
    }

    QJsonValue text(const QString& path, const QString& given, const FieldCarriage& carriage)
    {
        if (carriage.form == FieldCarriage::Value)
            return given;
        if (carriage.form == FieldCarriage::ExactCp866) {
            judgeExact(path, given);
            return given;
        }
        const PrinterText printed = carriage.form == FieldCarriage::Cp866 ? printerText(given, carriage.limit)
                                                                          : cutText(given, carriage.limit);
        if (!printed.isWhole())
            m_findings.append({Finding::Warning, path, given, printed.warning()});
        return printed.text;
    }

    void judgeExact(const QString& path, const QString& given)
    {
        const QString missing = missingCharacters(given);
        if (!missing.isEmpty())
            m_findings.append({Finding::Error, path, given,
                tr("cannot be printed %1: it may not have \"%2\"").arg(m_over, missing)});
    }

    const CheckOptions& m_options;
    QList<Finding>& m_findings;
    const QString m_over;
    QSet<QString> m_carried;
    QSet<QString> m_dropped;
};

} // namespace

QJsonObject carriedReceipt(const QJsonObject& receipt, const CheckOptions& options, QList<Finding>& findings)
{
    FieldSieve sieve(options, findings);
    const QJsonObject result = sieve.object(receipt, {});
    sieve.judgeDrops();
    return result;
}

} // namespace receipt
