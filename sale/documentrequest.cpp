#include "documentrequest.h"

#include <QCryptographicHash>
#include <QJsonDocument>

namespace sale {

QByteArray bodyDigest(const QByteArray& body)
{
    const QJsonDocument json = QJsonDocument::fromJson(body);
    const QByteArray plain = json.isNull() ? body : json.toJson(QJsonDocument::Compact);
    return QCryptographicHash::hash(plain, QCryptographicHash::Sha256).toHex();
}

} // namespace sale
