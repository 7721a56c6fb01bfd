#include "documentrequest.h"

#include "documentid.h"

#include <QCryptographicHash>
#include <QJsonDocument>

namespace sale {

DocumentRequest plainRequest(
    const QString& id, const QString& kind, QJsonObject details, const QString& registerName)
{
    details.insert(QStringLiteral("type"), kind);
    return {id.isEmpty() ? newDocumentId() : id, kind, QJsonDocument(details).toJson(QJsonDocument::Compact),
        registerName};
}

QByteArray bodyDigest(const QByteArray& body)
{
    const QJsonDocument json = QJsonDocument::fromJson(body);
    const QByteArray plain = json.isNull() ? body : json.toJson(QJsonDocument::Compact);
    return QCryptographicHash::hash(plain, QCryptographicHash::Sha256).toHex();
}

} // namespace sale
