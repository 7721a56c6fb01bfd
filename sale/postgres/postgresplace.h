#pragma once

#include <QMap>
#include <QString>

#include <optional>

namespace sale {

/// Where a PostgreSQL database is: postgresql://USER@HOST:PORT/DATABASE?KEY=VALUE, as libpq takes it. What
/// stands behind the question mark is handed to libpq, TLS and the folder of a socket (host=) among it.
struct PostgresPlace
{
    static bool isPlace(const QString& text);
    /// Throws WrongPlace, which says what is wrong with it and no password.
    static PostgresPlace of(const QString& text);

    /// Without a password.
    QString shown() const;

    QString user = {};
    QString password = {};
    QString host = {};
    QString port = {};
    QString database = {};
    QMap<QString, QString> parameters = {};
};

} // namespace sale
