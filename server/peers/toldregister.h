#pragma once

#include "api/till.h"

#include <QElapsedTimer>
#include <QJsonArray>

namespace frserver {

/// What the service that works a register has told of it.
struct ToldRegister
{
    Till::Settings settings;
    QJsonObject view;
    /// The id of that service.
    QString service;
    /// How old that is, in seconds, when it was read.
    double age = 0;
    QElapsedTimer read;
    /// Numbers of pauses that were ordered and have been followed before that.
    QJsonArray followed;
};

} // namespace frserver
