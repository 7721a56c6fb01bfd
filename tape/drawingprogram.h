#pragma once

#include <QString>

namespace tape {

/// What frspf-draw tells the program that started it by its exit status.
enum DrawStatus { Drawn, OutputLost, WrongUsage, TooLong };

/// Where frspf-draw is: a build has it beside this program, an installation in the folder of programs that
/// nobody calls by hand, which is named as seen from the prefix. Empty when it is not installed.
QString drawingProgram(const QString& installedFolder);

} // namespace tape
