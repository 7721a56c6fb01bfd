#include "api/poolrules.h"

#include "api/api.h"
#include "api/rights.h"
#include "currenttime.h"
#include "mockfactory.h"

#include <algorithm>

namespace frserver {

namespace {

using receipt::Finding;

bool isSameFinding(const Finding& left, const Finding& right)
{
    return left.severity == right.severity && left.path == right.path && left.given == right.given
        && left.reason == right.reason;
}

/// As its registers are known here; those that are not may be of either protocol.
QList<Till::Settings> tillsOf(const Api& api, const Pool& pool)
{
    QList<Till::Settings> tills;
    const QStringList names = api.registersOf(pool);
    for (const QString& name : names) {
        if (const Till* const till = api.till(name))
            tills.append(till->settings());
    }
    if (tills.isEmpty()) {
        for (const receipt::Protocol protocol : {receipt::Protocol::Xml, receipt::Protocol::Hex})
            tills.append(Till::Settings{.name = {}, .protocol = protocol, .hasCashier = true});
    }
    return tills;
}

} // namespace

QList<PostingRules> poolRules(const Api& api, const http::Request& request, const Pool& pool)
{
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    QList<PostingRules> all;
    const QList<Till::Settings> tills = tillsOf(api, pool);
    for (const Till::Settings& till : tills) {
        const auto isLike = [&till](const PostingRules& one) {
            return one.protocol == till.protocol && one.now.timeZone() == till.timeZone
                && one.hasCashier == till.hasCashier;
        };
        if (std::any_of(all.cbegin(), all.cend(), isLike))
            continue;
        all.append({till.protocol, now.toTimeZone(till.timeZone), pool.settings().startBefore,
            till.hasCashier, rights::completion(api, request), true, pool.settings().taxSystems});
    }
    return all;
}

PostedDocument documentForPool(const Api& api, const http::Request& request, const Pool& pool)
{
    const QList<PostingRules> all = poolRules(api, request, pool);
    PostedDocument posted = postedDocument(request, all.constFirst());
    for (const PostingRules& rules : all) {
        const PostedDocument other = postedDocument(request, rules);
        for (const Finding& finding : other.findings) {
            const auto isKnown = [&finding](const Finding& one) { return isSameFinding(one, finding); };
            if (std::none_of(posted.findings.cbegin(), posted.findings.cend(), isKnown))
                posted.findings.append(finding);
        }
    }
    posted.request.pool = pool.settings().name;
    return posted;
}

} // namespace frserver
