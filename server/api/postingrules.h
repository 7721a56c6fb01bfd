#pragma once

#include "documentrequest.h"

#include "protocol.h"

#include <QDateTime>
#include <QStringList>

#include <functional>

namespace frserver {

/// What a document is read by besides itself.
struct PostingRules
{
    receipt::Protocol protocol = receipt::Protocol::Xml;
    /// In the register's zone: its day is that of the sale.
    QDateTime now;
    /// Seconds in which a document is begun that says nothing of it; 0 for any time.
    int startBefore = 0;
    /// The register has a cashier of its own.
    bool hasCashier = false;
    /// What a body says that leaves out what the sale says whose goods come back.
    std::function<QByteArray(const sale::DocumentRequest& request)> completed = {};
    /// Any of several registers may make it: a receipt alone is the same at each of them.
    bool isForPool = false;
    /// By their names in receipts, which must name one of them; empty for any.
    QStringList taxSystems = {};
};

} // namespace frserver
