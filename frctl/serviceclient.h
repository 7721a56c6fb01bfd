#pragma once

#include "serviceanswer.h"
#include "serviceport.h"

#include <QByteArray>
#include <QNetworkAccessManager>

#include <chrono>

class QNetworkReply;
class QNetworkRequest;

namespace frctl {

/// Asks a service, one question at a time. Each throws Interrupted.
class ServiceClient
{
public:
    /// An empty token is none.
    ServiceClient(const ServicePort& port, const QByteArray& token);

    /// The register as the service sees it.
    ServiceAnswer askRegister();
    /// A document for it. The service may wait so long for the document's end.
    ServiceAnswer post(const QString& id, const QByteArray& body, std::chrono::seconds wait);
    /// For people.
    QString address() const { return m_port.service.toString(); }

private:
    QNetworkRequest request(const QString& path) const;
    static ServiceAnswer answerTo(QNetworkReply* reply);

    const ServicePort m_port;
    const QByteArray m_token;
    QNetworkAccessManager m_network;
};

} // namespace frctl
