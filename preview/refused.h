#pragma once

#include <QString>

#include <stdexcept>

namespace preview {

/// The register refuses the receipt.
class Refused : public std::runtime_error
{
public:
    /// In the words of driver and register, which are Russian.
    explicit Refused(const QString& why)
        : std::runtime_error(why.toStdString())
    {
    }

    QString why() const { return QString::fromUtf8(what()); }
};

} // namespace preview
