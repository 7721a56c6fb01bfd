#include "centredline.h"

QString centredLine(const QString& text, QChar fill, int width)
{
    const auto length = static_cast<int>(text.length());
    const QString run(qMax(0, width / 2 - length / 2 - 1), fill);
    return run + QLatin1Char(' ') + text + QLatin1Char(' ') + run;
}
