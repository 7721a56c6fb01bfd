#pragma once

#include <QString>

#include <stdexcept>

namespace frserver {

/// A value that is none; where it stands is for the reader of the file to say.
class SettingError : public std::runtime_error
{
public:
    explicit SettingError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

} // namespace frserver
