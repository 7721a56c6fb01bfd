#pragma once

#include "documentstate.h"

#include <QDateTime>
#include <QList>
#include <QString>

namespace sale {

/// Which documents are looked for; what is empty does not matter.
struct DocumentQuery
{
    enum Order {
        /// In the order of acceptance.
        Oldest,
        Newest,
        /// The one that was begun last is the first; those that were never begun, or were taken over from a
        /// former journal, are left out.
        LastBegun
    };

    QString id = {};
    QList<DocumentState> states = {};
    QString registerName = {};
    /// Accepted for that pool, whichever register has claimed it since.
    QString pool = {};
    QString drive = {};
    quint32 documentNumber = 0;
    /// Accepted then or later.
    QDateTime since = {};
    /// With this marked piece (receipt::markIdentity). The one that was accepted last is the first then.
    QString goods = {};
    /// The returns of that sale.
    QString returnOf = {};
    /// A part of the id or of the body; Latin letters in either case.
    QString text = {};
    /// Behind this place in the order of acceptance.
    qint64 after = 0;
    /// In front of that one; 0 for all.
    qint64 before = 0;
    /// 0 for all.
    int limit = 0;
    Order order = Oldest;
    bool withAttempts = true;
    /// Bodies may be long, and many.
    bool withBodies = true;
    /// When it was accepted, begun and so on; since when it waits is told without.
    bool withTimes = true;
};

} // namespace sale
