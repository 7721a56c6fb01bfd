#include "http/site.h"

#include "http/problem.h"

#include <QLoggingCategory>

namespace http {

namespace {

Q_LOGGING_CATEGORY(siteLog, "http.site")

/// A program's mistake is told in its log, not to whoever asked.
Problem ownMistake(const Request& request, const char* what)
{
    qCWarning(siteLog).noquote() << request.method << request.path << "failed:" << what;
    return Problem(500, QStringLiteral("The program could not do this; its log says why."));
}

/// HEAD of a stream would never end.
Answer headOnly(const Answer& answer)
{
    if (const auto* stream = std::get_if<std::shared_ptr<Stream>>(&answer))
        return Response::bytes({}, (*stream)->contentType());
    return answer;
}

} // namespace

Answer Site::answer(Request request) const
{
    try {
        Answer answer = answerInside(request);
        if (auto* response = std::get_if<Response>(&answer))
            finish(request, response->headers);
        return request.method == "HEAD" ? headOnly(answer) : answer;
    } catch (const Problem& problem) {
        return refusal(request, problem);
    } catch (const std::exception& failure) {
        return refusal(request, ownMistake(request, failure.what()));
    } catch (...) {
        return refusal(request, ownMistake(request, "something that is no std::exception"));
    }
}

Response Site::refusal(const Request& request, const Problem& problem) const
{
    Response response = problem.response();
    finish(request, response.headers);
    return response;
}

void Site::finish(const Request& request, Headers& answer) const
{
    answer.set("X-Content-Type-Options", "nosniff");
    if (!answer.contains("Cache-Control"))
        answer.set("Cache-Control", "no-store");
    gate.allow(request, answer);
}

std::optional<Caller> Site::callerOf(const Request& request) const
{
    const QByteArray text = request.headers.value("Authorization").trimmed();
    const QByteArray scheme = "bearer ";
    if (text.left(scheme.size()).toLower() != scheme)
        return std::nullopt;
    return tokens.callerOf(text.mid(scheme.size()).trimmed());
}

Answer Site::answerInside(Request& request) const
{
    request.caller = callerOf(request);
    gate.check(request);
    // A browser asks so before it sends a token.
    if (request.method == "OPTIONS") {
        const QByteArray allowed = router.allowed(request);
        if (allowed.isEmpty())
            throw Problem(404);
        return Response::empty().with("Allow", allowed);
    }
    if (router.allowed(request).isEmpty()) {
        if (const std::optional<Response> file = files.find(request))
            return *file;
    }
    return routed(request);
}

Answer Site::routed(Request& request) const
{
    const Route& route = router.find(request);
    checkAccess(request, route.access);
    return route.handler(request);
}

void Site::checkAccess(const Request& request, const Access& access) const
{
    if (access.isPublic || tokens.isEmpty())
        return;
    if (!request.caller)
        throw Problem(401, QStringLiteral("This wants a token that is known here."))
            .withHeader("WWW-Authenticate", "Bearer");
    if (!access.roles.isEmpty() && !access.roles.contains(request.caller->role))
        throw Problem(403, QStringLiteral("The role of this token does not allow it."));
}

} // namespace http
