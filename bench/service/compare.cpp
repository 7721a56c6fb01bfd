// What the service adds to a sale.

#include "keptconnection.h"
#include "measures.h"

#include "cashdesk.h"
#include "protocol.h"
#include "registerconnection.h"
#include "sqlitestore.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <stdexcept>

namespace {

constexpr int warmUp = 20;

double milliseconds(const std::function<void()>& work)
{
    constexpr double nanoseconds = 1e6;
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / nanoseconds;
}

void sellDirectly(sale::CashDesk& desk, const QByteArray& receipt)
{
    const sale::IssueResult result = desk.issue(QString::fromLatin1(newSaleId()), receipt);
    if (!result.isIssued())
        throw std::runtime_error(
            "not issued: " + (result.failure ? result.failure->text.toStdString() : std::string()));
}

} // namespace

void compare(const QStringList& arguments, const QByteArray& receipt)
{
    devices::ConnectionSettings settings;
    settings.plugins = {arguments.at(0)};
    settings.port = arguments.at(1);
    settings.protocol = arguments.at(2);
    devices::RegisterConnection connection(settings);
    sale::SqliteStore journal(arguments.at(3));
    const bool isHex = settings.protocol == QStringLiteral("HEX");
    sale::RegisterLine line(isHex ? receipt::Protocol::Hex : receipt::Protocol::Xml, true,
        [&connection] { return connection.soleConnection(); });
    line.repeats = [&connection] { return connection.repeats(); };
    sale::CashDesk desk(connection.driver(), journal, {line, QStringLiteral("direct")});
    KeptConnection service(static_cast<quint16>(arguments.at(4).toUInt()));

    QJsonArray direct;
    QJsonArray throughService;
    const int count = arguments.at(6).toInt() + warmUp;
    // In turns, so that a busy moment hits both.
    for (int i = 0; i < count; ++i) {
        const double ours = milliseconds([&] { service.sell(arguments.at(5), newSaleId(), receipt); });
        const double theirs = milliseconds([&] { sellDirectly(desk, receipt); });
        if (i < warmUp)
            continue;
        throughService.append(ours);
        direct.append(theirs);
    }
    const QJsonObject told{{QStringLiteral("direct"), direct}, {QStringLiteral("service"), throughService}};
    std::printf("%s\n", QJsonDocument(told).toJson(QJsonDocument::Compact).constData());
}
