#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace frctl {

/// A register that a service (frserver) owns: where the service is, and what it calls the register.
struct ServicePort
{
    QUrl service;
    QString registerName;
};

/// True for a name that begins with "service:", good or not.
bool isServiceName(const QString& port);
/// service:NAME is a register of this machine's service, service://HOST[:PORT]/NAME one elsewhere, over TLS
/// unless the host is this machine. An address may also be whole: service:http://HOST:PORT/PATH/NAME. Nothing
/// for what is none of these.
std::optional<ServicePort> servicePortOf(const QString& port);

} // namespace frctl
