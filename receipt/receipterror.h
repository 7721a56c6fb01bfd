#pragma once

#include <QJsonValue>
#include <QString>

#include <stdexcept>

namespace receipt {

/// A receipt that is not to be sent: where in the JSON and why.
class ReceiptError : public std::runtime_error
{
public:
    ReceiptError(const QString& path, const QString& reason, const QJsonValue& given = QJsonValue::Undefined);

    /// "items[2].price"; empty for the receipt as a whole.
    QString path() const { return m_path; }
    /// What is wrong with it and what is allowed.
    QString reason() const { return m_reason; }
    /// The value as it stands in the file; undefined where there is nothing to show.
    QJsonValue given() const { return m_given; }
    /// The same as text: a text as it is, another plain value as the file has it, nothing for the rest.
    QString givenText() const;

private:
    QString m_path;
    QString m_reason;
    QJsonValue m_given;
};

} // namespace receipt
