#pragma once

#include <QStringList>

namespace http {

/// Who may use a route of a site that has tokens.
struct Access
{
    /// No token is wanted, as for a page and for a question whether the program lives.
    bool isPublic = false;
    /// Roles of the caller, any of them; none means any token.
    QStringList roles;
};

} // namespace http
