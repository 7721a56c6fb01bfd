#pragma once

#include "options.h"

#include <QByteArray>
#include <QJsonObject>

namespace frctl {

/// What a command has a service make.
struct ServiceDocument
{
    QByteArray body;
    /// The one that stands in the body; empty without.
    QString id = {};
    /// What is said of it once it is issued, by the answer of the service.
    QString (*done)(const Options& options, const QJsonObject& answer) = nullptr;
    /// Of one that was not needed, as the shift was so already.
    const char* unchanged = nullptr;
};

/// Whether a service makes documents of that command.
bool isServedDocument(const QString& command);
/// Throws UsageError and ReceiptError.
ServiceDocument serviceDocument(const Options& options);

} // namespace frctl
