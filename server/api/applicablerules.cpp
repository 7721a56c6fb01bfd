#include "api/applicablerules.h"

#include "api/api.h"
#include "api/rights.h"
#include "currenttime.h"
#include "mockfactory.h"

#include <algorithm>

namespace frserver {

namespace {

/// As its registers are known here, of those that take the same receipts one; those that are not known may be
/// of either protocol.
QList<Till::Settings> tillsOf(const Api& api, const Pool& pool)
{
    QList<Till::Settings> kinds;
    const auto add = [&kinds](const Till::Settings& till) {
        const auto isLike = [&till](const Till::Settings& one) {
            return one.protocol == till.protocol && one.hasCashier == till.hasCashier
                && one.timeZone == till.timeZone;
        };
        if (std::none_of(kinds.cbegin(), kinds.cend(), isLike))
            kinds.append(till);
    };
    const QStringList names = api.places().registersOf(pool);
    for (const QString& name : names) {
        if (const Till* const till = api.till(name))
            add(till->settings());
    }
    if (kinds.isEmpty()) {
        for (const receipt::Protocol protocol : {receipt::Protocol::Xml, receipt::Protocol::Hex})
            add(anyRegister(protocol));
    }
    return kinds;
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
