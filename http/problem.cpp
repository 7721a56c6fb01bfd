#include "http/problem.h"

#include <microhttpd.h>

namespace http {

namespace {

QString statusName(int status)
{
    return QString::fromLatin1(MHD_get_reason_phrase_for(static_cast<unsigned>(status)));
}

} // namespace

Problem::Problem(int status, const QString& detail)
    : Problem(status, QStringLiteral("about:blank"), statusName(status), detail)
{
}

Problem::Problem(int status, const QString& type, const QString& title, const QString& detail)
    : m_status(status)
    , m_members({{QStringLiteral("type"), type}, {QStringLiteral("title"), title},
          {QStringLiteral("status"), status}})
{
    if (!detail.isEmpty())
        m_members.insert(QStringLiteral("detail"), detail);
}

Problem Problem::with(const QString& member, const QJsonValue& value) const
{
    return with(QJsonObject{{member, value}});
}

Problem Problem::with(const QJsonObject& members) const
{
    Problem problem = *this;
    for (auto member = members.begin(); member != members.end(); ++member)
        problem.m_members.insert(member.key(), member.value());
    return problem;
}

Problem Problem::withHeader(const QByteArray& name, const QByteArray& value) const
{
    Problem problem = *this;
    problem.m_headers.set(name, value);
    return problem;
}

Response Problem::response() const
{
    Response response = Response::json(m_members, m_status);
    response.headers.set("Content-Type", "application/problem+json");
    for (const auto& [name, value] : m_headers.fields())
        response.headers.set(name, value);
    return response;
}

} // namespace http
