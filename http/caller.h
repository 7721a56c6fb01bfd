#pragma once

#include <QString>
#include <QStringList>

namespace http {

/// Who a token belongs to. What roles and scopes mean is the program's to say.
struct Caller
{
    QString name;
    QString role;
    QStringList scopes;
};

} // namespace http
