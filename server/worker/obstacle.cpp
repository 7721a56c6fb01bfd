#include "worker/obstacle.h"

#include "worker/driveproblem.h"

#include "connectionerror.h"
#include "errorkind.h"
#include "failure.h"

namespace frserver {

namespace {

QString reasonOf(devices::ConnectionError::Reason reason)
{
    switch (reason) {
    case devices::ConnectionError::NoPlugin:
        return QStringLiteral("plugin");
    case devices::ConnectionError::Busy:
        return QStringLiteral("busy");
    case devices::ConnectionError::NoAccess:
        return QStringLiteral("access");
    default:
        return QStringLiteral("line");
    }
}

} // namespace

Obstacle Obstacle::current()
{
    try {
        throw;
    } catch (const devices::ConnectionError& error) {
        return {reasonOf(error.reason()), QString::fromUtf8(error.what())};
    } catch (const DriveProblem& problem) {
        const bool isNew = problem.reason() == DriveProblem::NewDrive;
        return {isNew ? QStringLiteral("newDrive") : QStringLiteral("testDrive"),
            QString::fromUtf8(problem.what())};
    } catch (...) {
        const sale::Failure failure = sale::currentFailure();
        return {heldReason(failure.kind, failure.exceptionName), failure.text};
    }
}

QString heldReason(sale::ErrorKind kind, const QString& exceptionName)
{
    if (exceptionName == QStringLiteral("JournalError"))
        return QStringLiteral("journal");
    return exceptionName == QStringLiteral("ReviewNeeded") ? QStringLiteral("needsReview")
                                                           : sale::errorKindName(kind);
}

QJsonObject Obstacle::toJson() const
{
    return {{QStringLiteral("reason"), reason}, {QStringLiteral("text"), text}};
}

} // namespace frserver
