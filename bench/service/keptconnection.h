#pragma once

#include <QByteArray>
#include <QString>

/// One connection to the service that is kept from request to request, as a till keeps it: blocking, with no
/// more than an answer needs whose length stands in its head.
class KeptConnection
{
public:
    /// Throws std::runtime_error, as all of it does.
    explicit KeptConnection(quint16 port);
    ~KeptConnection();
    KeptConnection(const KeptConnection&) = delete;
    KeptConnection& operator=(const KeptConnection&) = delete;

    /// Sells, waits for the end, and throws when the receipt was not issued.
    void sell(const QString& registerName, const QByteArray& id, const QByteArray& receipt);

private:
    void send(const QByteArray& bytes) const;
    /// Status and body.
    std::pair<int, QByteArray> receive();
    void receiveMore();

    int m_socket;
    QByteArray m_received;
};
