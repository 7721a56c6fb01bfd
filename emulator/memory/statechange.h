#pragma once

#include "memory/documentrow.h"

#include <QList>
#include <QMap>
#include <QStringList>

namespace emulator {

/// What an exchange has changed of a state.
struct StateChange
{
    /// Parts by name that have another content now.
    QMap<QString, QByteArray> parts;
    /// Parts that are no more.
    QStringList gone;
    /// Documents that are new.
    QList<DocumentRow> documents;

    bool isEmpty() const { return parts.isEmpty() && gone.isEmpty() && documents.isEmpty(); }
};

} // namespace emulator
