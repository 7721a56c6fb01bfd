#pragma once

#include <QString>

#include <cstdio>

namespace frserver {

constexpr int failedStatus = 1;
constexpr int wrongStatus = 2;

/// To whoever started the program, line by line. Gives the status back.
inline int say(int status, const QString& what)
{
    const QStringList lines = what.split(QLatin1Char('\n'));
    for (const QString& line : lines)
        std::fprintf(stderr, "frserver: %s\n", qPrintable(line));
    return status;
}

} // namespace frserver
