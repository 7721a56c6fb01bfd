#pragma once

#include <QString>
#include <QStringList>

namespace frserver {

/// What is not of one register.
struct ServiceSettings
{
    /// ADDRESS:PORT as it is written; empty for the usual one.
    QString listen = {};
    /// "FILE:LINE" of it.
    QString listenPlace = {};
    /// Empty for the machine's.
    QString journal = {};
    /// The database of many machines in its stead; empty without one.
    QString storeUrl = {};
    /// Seconds for which a register is this service's, unless it says so anew.
    int leaseSeconds = 15;
    /// Of the tokens; empty for the usual one.
    QString tokens = {};
    /// PEM files; empty for no TLS.
    QString tlsCertificate = {};
    QString tlsKey = {};
    bool hasTls() const { return !tlsCertificate.isEmpty(); }
    /// Files or folders; none for where the plugin is installed.
    QStringList plugins = {};
    /// Documents that may wait for one register.
    int queueLimit = 1000;
    /// Who is told of each end of a document; empty for nobody.
    QString webhookUrl = {};
    QByteArray webhookSecret = {};
};

} // namespace frserver
