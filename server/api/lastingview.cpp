#include "api/lastingview.h"

#include <QStringList>

namespace frserver {

QJsonObject lastingView(QJsonObject view)
{
    const QStringList members = view.keys();
    for (const QString& member : members) {
        if (member.endsWith(QStringLiteral("Age")))
            view.remove(member);
    }
    return view;
}

} // namespace frserver
