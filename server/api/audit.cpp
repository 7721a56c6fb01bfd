#include "api/audit.h"

#include "api/rights.h"

#include <QLoggingCategory>

namespace frserver {

namespace {

Q_LOGGING_CATEGORY(auditLog, "frserver.audit")

} // namespace

void audit(const http::Request& request, const QString& what)
{
    qCInfo(auditLog).noquote() << rights::callerName(request) << what;
}

} // namespace frserver
