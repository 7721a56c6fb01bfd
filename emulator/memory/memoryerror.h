#pragma once

#include <QString>

#include <stdexcept>

namespace emulator {

/// A state that cannot be read, kept or used: the text says why, and leaves it to others to say which.
class MemoryError : public std::runtime_error
{
public:
    explicit MemoryError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
    QString text() const { return QString::fromUtf8(what()); }
};

} // namespace emulator
