#include "warnings.h"

#include "findingsjson.h"
#include "frctltr.h"
#include "messages.h"

namespace frctl {

void Warnings::add(const QList<receipt::Finding>& findings)
{
    for (const receipt::Finding& finding : findings)
        complain(tr("warning: ") + finding.text());
    m_findings += findings;
}

QJsonArray Warnings::json() const
{
    return sale::findingsJson(m_findings);
}

} // namespace frctl
