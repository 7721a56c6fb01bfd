#include "api/api.h"
#include "api/apiroute.h"
#include "api/applicablerules.h"
#include "api/askedprotocol.h"
#include "api/posteddocument.h"
#include "api/rights.h"

#include <QJsonArray>

#include <algorithm>

namespace frserver {

namespace {

using http::Answer;
using http::Request;
using receipt::Finding;
using receipt::Protocol;

struct ToldFinding
{
    Finding finding;
    QStringList over;
};

void add(QList<ToldFinding>& all, const Finding& finding, const QString& protocol)
{
    const auto known = std::find_if(
        all.begin(), all.end(), [&](const ToldFinding& told) { return told.finding == finding; });
    if (known == all.end())
        all.append({finding, {protocol}});
    else if (!known->over.contains(protocol))
        known->over.append(protocol);
}

/// Those of the pool, or by the protocol of the register, or that of the question, or both.
QList<PostingRules> checkRules(const Api& api, const Request& request)
{
    if (const auto name = request.queryValue(QStringLiteral("pool")))
        return poolRules(api, request, poolNamed(api, request, *name));
    QList<Protocol> protocols{Protocol::Xml, Protocol::Hex};
    if (const auto name = request.queryValue(QStringLiteral("register")))
        protocols = {tillNamed(api, request, *name).settings().protocol};
    else if (const std::optional<Protocol> asked = askedProtocol(request))
        protocols = {*asked};
    QList<PostingRules> all;
    for (const Protocol protocol : std::as_const(protocols))
        all.append(registerRules(api, request, anyRegister(protocol)));
    return all;
}

QJsonArray toldJson(const QList<ToldFinding>& all, Finding::Severity severity, qsizetype protocols)
{
    QJsonArray json;
    for (const ToldFinding& told : all) {
        if (told.finding.severity != severity)
            continue;
        const bool isEverywhere = told.over.size() == protocols;
        json.append(QJsonObject{{QStringLiteral("path"), told.finding.path},
            {QStringLiteral("given"), told.finding.given}, {QStringLiteral("text"), told.finding.reason},
            {QStringLiteral("protocol"), isEverywhere ? QJsonValue() : QJsonValue(told.over.constFirst())}});
    }
    return json;
}

bool isError(const Finding& finding)
{
    return finding.severity == Finding::Error;
}

/// All that would refuse the document, or be told of it; nothing is stored and no register asked.
Answer check(Api& api, const Request& request)
{
    const QList<PostingRules> allRules = checkRules(api, request);
    QList<ToldFinding> all;
    QStringList protocols;
    QStringList refusedOver;
    for (const PostingRules& rules : allRules) {
        const QList<Finding> findings = documentFindings(request.body, rules);
        const QString name = receipt::protocolName(rules.protocol);
        protocols.append(name);
        for (const Finding& finding : findings)
            add(all, finding, name);
        if (std::any_of(findings.cbegin(), findings.cend(), isError))
            refusedOver.append(name);
    }
    // Registers of a pool over the same protocol may differ in other things.
    protocols.removeDuplicates();
    QJsonArray acceptedOver;
    for (const QString& name : std::as_const(protocols)) {
        if (!refusedOver.contains(name))
            acceptedOver.append(name);
    }
    return http::Response::json(QJsonObject{{QStringLiteral("acceptedOver"), acceptedOver},
        {QStringLiteral("errors"), toldJson(all, Finding::Error, protocols.size())},
        {QStringLiteral("warnings"), toldJson(all, Finding::Warning, protocols.size())}});
}

} // namespace

const QList<ApiRoute>& checkRoutes()
{
    static const QList<ApiRoute> routes{{"POST", QStringLiteral("/check"), check, {},
        {QStringLiteral("register"), QStringLiteral("pool"), QStringLiteral("protocol")}}};
    return routes;
}

} // namespace frserver
