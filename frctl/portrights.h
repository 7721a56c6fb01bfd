#pragma once

#include <QString>

#include <sys/types.h>

namespace frctl {

/// Who may open a port.
struct PortRights
{
    QString owner;
    QString group;
    mode_t mode = 0;
    /// One end of a pair that a program has made, for which no rule of the system cares.
    bool isPty = false;
};

/// Of a port that is there.
PortRights rightsOf(const QString& path);
/// What lets this user open a port that he may not.
QString portAdvice(const QString& path, const PortRights& rights);

} // namespace frctl
