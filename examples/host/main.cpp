// A minimal host program: sells the receipt of a JSON file, once an id, whenever and however often it is
// started.
//
//   minimalhost PORT HEX|XML ID RECEIPT.json     PORT is a serial line, a pseudo terminal or tcp:host:port

#include <frdevices/registerconnection.h>
#include <frhost/exceptions.h>
#include <frsale/cashdesk.h>
#include <frsale/journalplace.h>
#include <frsale/sqlitestore.h>

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

namespace {

int sell(const QStringList& arguments)
{
    QTextStream out(stdout);
    QFile file(arguments.at(4));
    if (!file.open(QIODevice::ReadOnly))
        return 2;
    sale::SqliteStore journal(sale::journalPlace());
    devices::RegisterConnection connection(
        {.port = arguments.at(1), .protocol = arguments.at(2), .plugins = {QStringLiteral(PLUGIN_DIR)}});
    // True: no other program than those of this machine, which share lock and journal, works the register.
    const sale::RegisterLine line{
        arguments.at(2) == QStringLiteral("HEX") ? receipt::Protocol::Hex : receipt::Protocol::Xml, true,
        [&connection] { return connection.soleConnection(); }};
    sale::CashDesk desk(connection.driver(), journal, {line, arguments.at(1)});
    for (const sale::SettledSale& settled : desk.open())
        out << settled.id << " of an earlier start: " << sale::verdictText(settled.verdict) << Qt::endl;
    const sale::IssueResult result = desk.issue(arguments.at(3), file.readAll());
    if (result.failure)
        out << result.failure->text << Qt::endl;
    out << result.id << ": " << sale::verdictText(result.verdict) << Qt::endl;
    if (!result.failure)
        connection.leaveIdle();
    return result.isIssued() ? 0 : 1;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    try {
        return argc == 5 ? sell(QCoreApplication::arguments()) : 2;
    } catch (const BasicException& failure) { // of the register or its line
        QTextStream(stderr) << failure.tr().ru() << Qt::endl;
    } catch (const std::exception& failure) { // no plugin, no port, no journal
        QTextStream(stderr) << failure.what() << Qt::endl;
    }
    return 1;
}
