#include "application.h"
#include "logging.h"
#include "streams.h"
#include "tape/offscreen.h"

#include <driverlogtoqt.h>
#include <QCoreApplication>

#include <algorithm>

namespace {

/// Only a preview draws; nothing else has to wait for Qt Gui to start.
std::unique_ptr<QCoreApplication> makeApplication(int& argc, char** argv)
{
    const bool isPreview = std::any_of(
        argv, argv + argc, [](const char* argument) { return qstrcmp(argument, "preview") == 0; });
    if (isPreview)
        return tape::makeOffscreenApplication(argv);
    return std::make_unique<QCoreApplication>(argc, argv);
}

/// As they were given: the application of a preview sees none of them.
QStringList commandLine(int argc, char** argv)
{
    QStringList arguments;
    for (int place = 0; place < argc; ++place)
        arguments.append(QString::fromLocal8Bit(argv[place]));
    return arguments;
}

} // namespace

int main(int argc, char** argv)
{
    frctl::makeStreamsSafe();
    // Before Qt has a word to say about the locale.
    frctl::setUpLogging(frctl::Options::Error);
    const std::unique_ptr<QCoreApplication> application = makeApplication(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("frctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FRCTL_VERSION));
    driverLogToQt();
    return frctl::runApplication(commandLine(argc, argv));
}
