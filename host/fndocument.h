#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QList>

/// A document read from the fiscal drive: its fields as raw TLV blocks and as an object.
struct FnDocument
{
    QList<QByteArray> fields;
    QJsonObject object;
};
