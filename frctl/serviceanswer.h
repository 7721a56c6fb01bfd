#pragma once

#include <QJsonObject>
#include <QString>

namespace frctl {

/// What came back of a question to a service.
struct ServiceAnswer
{
    /// Nothing was stored for it: neither did the question arrive, nor was it taken by whoever answered.
    bool isRefusedUnread() const { return isUnsent || (!isOurs() && status >= 400 && status < 500); }
    /// A journal that fails may do so behind the document, also when its service is asked what became of it.
    bool mayBeStored() const { return isOurs() ? text("type") == u"journal" : !isRefusedUnread(); }
    /// The service's own words, not those of something between.
    bool isOurs() const { return !json.isEmpty(); }
    /// It asks for the same once more.
    bool asksAgain() const { return status >= 500 || status == 429; }
    QString text(const char* member) const { return json.value(QLatin1String(member)).toString(); }

    /// Of HTTP; 0 where none came.
    int status = 0;
    /// Empty for what is no answer of a service.
    QJsonObject json = {};
    /// Seconds, by Retry-After; 0 without.
    int retryAfter = 0;
    /// What failed, for people.
    QString fault = {};
    /// Not a byte can have reached a service.
    bool isUnsent = false;
    /// Whoever is there cannot be trusted, or answers without TLS: to ask again changes nothing.
    bool isInVain = false;
};

} // namespace frctl
