#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <functional>

namespace http {

/// One of a list of events, which are counted from 1.
struct Event
{
    qint64 number = 0;
    QByteArray type;
    QJsonObject data;
};

/// Which events one wants; an empty function wants all.
using EventFilter = std::function<bool(const Event&)>;

} // namespace http
