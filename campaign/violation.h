#pragma once

#include <QString>

#include <stdexcept>

/// Something happened that must never happen.
class Violation : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

inline void expect(bool holds, const QString& what)
{
    if (!holds)
        throw Violation(what.toStdString());
}
