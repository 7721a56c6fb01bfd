#pragma once

#include <QString>

#include <stdexcept>

namespace receipt {

/// A receipt that is not to be sent: where in the JSON and why.
class ReceiptError : public std::runtime_error
{
public:
    ReceiptError(const QString& path, const QString& reason)
        : std::runtime_error(text(path, reason).toStdString())
        , m_path(path)
        , m_reason(reason)
    {
    }

    /// "items[2].price"; empty for the receipt as a whole.
    QString path() const { return m_path; }
    QString reason() const { return m_reason; }

private:
    static QString text(const QString& path, const QString& reason)
    {
        return path.isEmpty() ? reason : path + QStringLiteral(": ") + reason;
    }

    QString m_path;
    QString m_reason;
};

} // namespace receipt
