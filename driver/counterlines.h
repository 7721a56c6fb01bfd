#pragma once

#include <QMap>
#include <QStringList>

/// Lines of a counters printout: " тип %1 - %2" for each payment kind with its sum in roubles.
QStringList counterLines(const QMap<int, double>& sumsByKind);
