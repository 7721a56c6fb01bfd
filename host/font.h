#pragma once

#include <QByteArray>
#include <QString>

/// A font to be loaded into a device.
struct Font
{
    QString name;
    QByteArray data;
};
