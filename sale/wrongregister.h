#pragma once

#include <QString>

#include <stdexcept>

namespace sale {

/// Another register than the one that was expected is at the line: nothing may be sent to it.
class WrongRegister : public std::runtime_error
{
public:
    explicit WrongRegister(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

} // namespace sale
