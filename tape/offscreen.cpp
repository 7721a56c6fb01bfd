#include "tape/offscreen.h"

namespace tape {

std::unique_ptr<QGuiApplication> makeOffscreenApplication(char** arguments)
{
    // Kept by reference.
    static int count = 1;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return std::make_unique<QGuiApplication>(count, arguments);
}

} // namespace tape
