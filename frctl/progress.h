#pragma once

#include <QString>

namespace frctl {

/// A line on standard error while something lasts, for a person at a terminal only; gone when it is over.
class Progress
{
public:
    explicit Progress(const QString& text);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    bool m_isShown;
};

} // namespace frctl
