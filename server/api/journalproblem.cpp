#include "api/journalproblem.h"

#include "http/problem.h"

#include <QLoggingCategory>

namespace frserver {

namespace {

Q_LOGGING_CATEGORY(journalLog, "frserver.api")

} // namespace

http::Response journalProblem(const sale::JournalError& error)
{
    qCWarning(journalLog).noquote() << error.what();
    return http::Problem(503, QStringLiteral("journal"), QStringLiteral("The journal cannot be used"),
        QStringLiteral("%1. Post the same id again.").arg(QString::fromUtf8(error.what())))
        .withHeader("Retry-After", "5")
        .response();
}

} // namespace frserver
