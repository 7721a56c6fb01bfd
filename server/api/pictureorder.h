#pragma once

#include "protocol.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace frserver {

/// A receipt to be drawn.
struct PictureOrder
{
    /// Complete and without errors, as JSON.
    QByteArray receipt = {};
    receipt::Protocol protocol = receipt::Protocol::Xml;
    /// When it is issued, in the register's zone.
    QDateTime time = {};
    /// Of a receipt that names none.
    QString cashier = {};
    QString cashierInn = {};
    /// "svg" or "png".
    QString format = {};
};

} // namespace frserver
