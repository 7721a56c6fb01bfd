#pragma once

#include "http/route.h"

#include <vector>

namespace http {

/// Finds the handler of a request. A part of a path that is written out wins over one in braces.
class Router
{
public:
    /// A handler may throw Problem.
    void add(
        const QByteArray& method, const QString& pattern, const Handler& handler, const Access& access = {});
    /// All of them, in their order: to be compared with what describes them.
    const std::vector<Route>& routes() const { return m_routes; }

    /// Sets the parameters of the request. HEAD takes the route of GET. Throws Problem: 405 with Allow when
    /// only other methods have the path, else 404.
    const Route& find(Request& request) const;
    /// The methods of a path as Allow has them; empty when it has none.
    QByteArray allowed(const Request& request) const;

private:
    std::vector<Route> m_routes;
};

} // namespace http
