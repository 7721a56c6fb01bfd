#pragma once

#include <QString>

#include <stdexcept>

namespace sale {

/// The journal of sales cannot be read or written, or another program is at work on the same sale. The text
/// names the file.
class JournalError : public std::runtime_error
{
public:
    explicit JournalError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

} // namespace sale
