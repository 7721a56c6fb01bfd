#include "program/places.h"

#include "configuration/configurationerror.h"
#include "program/service.h"

#include "journalplace.h"
#include "postgres/openstore.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace frserver {

QString journalOf(const Configuration& configuration)
{
    const ServiceSettings& settings = configuration.service;
    if (!settings.storeUrl.isEmpty())
        return settings.storeUrl;
    return settings.journal.isEmpty() ? sale::journalPlace() : settings.journal;
}

QString runPlaceOf(const Options& options, const Configuration& configuration)
{
    const QString journal = journalOf(configuration);
    if (!sale::isShared(journal))
        return journal;
    const QByteArray name = QCryptographicHash::hash(
        QFileInfo(options.configFile).absoluteFilePath().toUtf8(), QCryptographicHash::Sha256);
    constexpr qsizetype enough = 8;
    return QFileInfo(Service::tokenFile(configuration.service, journal)).absolutePath()
        + QStringLiteral("/frserver-") + QString::fromLatin1(name.first(enough).toHex());
}

ListenAddress listenAddress(const Options& options, const Configuration& configuration)
{
    const ServiceSettings& settings = configuration.service;
    const bool hasTokens = TokenFile(Service::tokenFile(settings, journalOf(configuration))).exists();
    const auto addressOf
        = [&](const QString& text) { return ListenAddress::of(text, settings.hasTls(), hasTokens); };
    if (!options.listen.isEmpty())
        return addressOf(options.listen);
    if (settings.listen.isEmpty())
        return {};
    try {
        return addressOf(settings.listen);
    } catch (const std::invalid_argument& error) {
        throw ConfigurationError(
            {QStringLiteral("%1: listen = %2").arg(settings.listenPlace, QString::fromUtf8(error.what()))});
    }
}

} // namespace frserver
