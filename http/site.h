#pragma once

#include "http/gate.h"
#include "http/router.h"
#include "http/staticfiles.h"
#include "http/tokens.h"

namespace http {

class Problem;

/// What a program serves: a function from requests to answers, without a line.
class Site
{
public:
    Router router;
    Gate gate;
    /// Without any, all are let in, as callers without a name.
    Tokens tokens;
    /// Asked where no route has the path; they need no token.
    StaticFiles files;

    /// Never throws: what a handler throws is a problem, 500 when it is not Problem.
    Answer answer(Request request) const;
    /// The same for a request that cannot be served, so that the page of a named origin can read why.
    Response refusal(const Request& request, const Problem& problem) const;
    /// What every answer to the request has, also one that came later, or a stream.
    void finish(const Request& request, Headers& answer) const;
    /// Whose token the request has, if any.
    std::optional<Caller> callerOf(const Request& request) const;

private:
    Answer answerInside(Request& request) const;
    Answer routed(Request& request) const;
    void checkAccess(const Request& request, const Access& access) const;
};

} // namespace http
