#pragma once

#include "memory/documentrow.h"

#include <QList>
#include <QMap>
#include <QString>

namespace emulator {

/// What an exchange has changed of a state.
struct StateChange
{
    /// Parts by name that have another content now.
    QMap<QString, QByteArray> parts;
    /// Documents that are new.
    QList<DocumentRow> documents;

    bool isEmpty() const { return parts.isEmpty() && documents.isEmpty(); }
};

} // namespace emulator
