#pragma once

#include <QString>

#include <stdexcept>

namespace receipt {

/// A receipt that is not to be sent: where in the JSON and why.
class ReceiptError : public std::runtime_error
{
public:
    ReceiptError(const QString& path, const QString& reason, const QString& given = {})
        : std::runtime_error(text(path, reason, given).toStdString())
        , m_path(path)
        , m_reason(reason)
        , m_given(given)
    {
    }

    /// "items[2].price"; empty for the receipt as a whole.
    QString path() const { return m_path; }
    /// What is wrong with it and what is allowed.
    QString reason() const { return m_reason; }
    /// The value as it stands in the file, a text in its quotes; empty where there is nothing to show.
    QString given() const { return m_given; }

private:
    /// items[2].price: must be a number (given: "abc")
    static QString text(const QString& path, const QString& reason, const QString& given)
    {
        const QString text = path.isEmpty() ? reason : path + QStringLiteral(": ") + reason;
        return given.isEmpty() ? text : text + QStringLiteral(" (given: %1)").arg(given);
    }

    QString m_path;
    QString m_reason;
    QString m_given;
};

} // namespace receipt
