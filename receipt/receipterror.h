#pragma once

#include "finding.h"

#include <QJsonValue>
#include <QList>
#include <QString>

#include <stdexcept>

namespace receipt {

/// So many errors are told of what is malformed: nobody reads more, and a file that is something else
/// altogether has millions.
inline constexpr qsizetype mostErrors = 1000;

/// A receipt that is not to be sent: where in the JSON and why; of several errors the first, and all of them
/// in the text.
class ReceiptError : public std::runtime_error
{
public:
    ReceiptError(const QString& path, const QString& reason, const QJsonValue& given = QJsonValue::Undefined);
    /// One error at least, and what else is to be said of the receipt.
    explicit ReceiptError(const QList<ReceiptError>& errors, const QList<Finding>& besides = {});

    /// "items[2].price"; empty for the receipt as a whole.
    QString path() const { return m_path; }
    /// What is wrong with it and what is allowed.
    QString reason() const { return m_reason; }
    /// The value as it stands in the file; undefined where there is nothing to show.
    QJsonValue given() const { return m_given; }
    /// The same as text: a text as it is, another plain value as the file has it, nothing for the rest.
    QString givenText() const;
    /// All that is to be said of the receipt, in the order in which it was found: the errors, and warnings
    /// where it was judged.
    const QList<Finding>& findings() const { return m_findings; }

private:
    QString m_path;
    QString m_reason;
    QJsonValue m_given;
    QList<Finding> m_findings;
};

} // namespace receipt
