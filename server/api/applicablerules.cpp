#include "api/applicablerules.h"

#include "api/api.h"
#include "api/rights.h"
#include "currenttime.h"
#include "mockfactory.h"

#include <algorithm>

namespace frserver {

namespace {

/// As its registers are known here; those that are not may be of either protocol.
QList<Till::Settings> tillsOf(const Api& api, const Pool& pool)
{
    QList<Till::Settings> tills;
    const QStringList names = api.places().registersOf(pool);
    for (const QString& name : names) {
        if (const Till* const till = api.till(name))
            tills.append(till->settings());
    }
    if (tills.isEmpty()) {
        for (const receipt::Protocol protocol : {receipt::Protocol::Xml, receipt::Protocol::Hex})
            tills.append(anyRegister(protocol));
    }
    return tills;
}

} // namespace

Till::Settings anyRegister(receipt::Protocol protocol)
{
    return {.name = {}, .protocol = protocol, .hasCashier = true};
}

PostingRules registerRules(const Api& api, const http::Request& request, const Till::Settings& till)
{
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    return {till.protocol, now.toTimeZone(till.timeZone), till.startBefore, till.hasCashier,
        rights::completion(api, request)};
}

QList<PostingRules> poolRules(const Api& api, const http::Request& request, const Pool& pool)
{
    QList<PostingRules> all;
    const QList<Till::Settings> tills = tillsOf(api, pool);
    for (const Till::Settings& till : tills) {
        const auto isLike = [&till](const PostingRules& one) {
            return one.protocol == till.protocol && one.now.timeZone() == till.timeZone
                && one.hasCashier == till.hasCashier;
        };
        if (std::any_of(all.cbegin(), all.cend(), isLike))
            continue;
        PostingRules rules = registerRules(api, request, till);
        rules.startBefore = pool.settings().startBefore;
        rules.isForPool = true;
        rules.taxSystems = pool.settings().taxSystems;
        all.append(rules);
    }
    return all;
}

PostedDocument documentForPool(const Api& api, const http::Request& request, const Pool& pool)
{
    const QList<PostingRules> all = poolRules(api, request, pool);
    PostedDocument posted = postedDocument(request, all.constFirst());
    for (const PostingRules& rules : all.sliced(1)) {
        const PostedDocument other = postedDocument(request, rules);
        for (const receipt::Finding& finding : other.findings) {
            if (!posted.findings.contains(finding))
                posted.findings.append(finding);
        }
    }
    posted.request.pool = pool.settings().name;
    return posted;
}

} // namespace frserver
