#include "api/audit.h"

#include "api/rights.h"

#include <QLoggingCategory>

namespace frserver {

namespace {

Q_LOGGING_CATEGORY(auditLog, "frserver.audit")

} // namespace

void audit(const http::Request& request, const QString& what)
{
    // A note may have several lines, and must not look like several entries.
    qCInfo(auditLog).noquote() << rights::callerName(request) << what.simplified();
}

} // namespace frserver
