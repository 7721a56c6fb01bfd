#include "api/journalproblem.h"

#include "api/apilog.h"
#include "http/problem.h"

#include <QDeadlineTimer>

#include <chrono>

namespace frserver {

namespace {

constexpr std::chrono::minutes againAfter(1);

/// Clients ask again and again, some of them without a pause.
bool isNews(const QByteArray& what)
{
    static QByteArray last;
    static QDeadlineTimer again;
    if (what == last && !again.hasExpired())
        return false;
    last = what;
    again.setRemainingTime(againAfter);
    return true;
}

} // namespace

http::Response journalProblem(const sale::JournalError& error)
{
    if (isNews(error.what()))
        qCWarning(apiLog).noquote() << error.what();
    return http::Problem(503, QStringLiteral("journal"), QStringLiteral("The journal cannot be used"),
        QStringLiteral("%1. Post the same id again.").arg(QString::fromUtf8(error.what())))
        .withHeader("Retry-After", "5")
        .response();
}

} // namespace frserver
