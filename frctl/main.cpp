#include "application.h"
#include "logging.h"
#include "streams.h"

#include <driverlogtoqt.h>
#include <QCoreApplication>

int main(int argc, char** argv)
{
    frctl::makeStreamsSafe();
    // Before Qt has a word to say about the locale.
    frctl::setUpLogging(frctl::Options::NoLog);
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("frctl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FRCTL_VERSION));
    driverLogToQt();
    return frctl::runApplication(QCoreApplication::arguments());
}
