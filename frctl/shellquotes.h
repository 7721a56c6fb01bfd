#pragma once

#include <QString>

namespace frctl {

/// One word of a shell's command line, whatever it holds.
inline QString shellQuoted(QString text)
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QStringLiteral("'\\''")) + QLatin1Char('\'');
}

} // namespace frctl
