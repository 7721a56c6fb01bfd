#include "worker/workerloop.h"

#include <driverlogtoqt.h>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("frserver"));
    QCoreApplication::setApplicationVersion(QStringLiteral(FRSERVER_VERSION));
    if (QCoreApplication::arguments().contains(QStringLiteral("--worker"))) {
        driverLogToQt();
        return frserver::runWorker();
    }
    std::fputs("frserver: the service is not put together yet; --worker works\n", stderr);
    return 2;
}
