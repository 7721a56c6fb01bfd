#pragma once

#include <QString>
#include <QStringList>

namespace frserver {

/// What the program was asked to do.
struct Options
{
    enum class Command {
        Serve,
        Worker,
        Preview,
        CheckConfig,
        AddToken,
        ListTokens,
        RemoveToken,
        BackUp,
        Export,
        Import,
        Upgrade,
        Migrate,
        Restored,
        MakeCertificate
    };
    enum class Outcome { Run, Done, Wrong };

    Command command = Command::Serve;
    QString configFile;
    /// ADDRESS:PORT in the place of the configuration's; empty for that.
    QString listen;
    /// Of a token; the file of a backup, an export, an import; the host of a certificate.
    QString name;
    QString role;
    QStringList registers;

    /// Reads the command line; prints what there is to say itself.
    static Outcome parse(const QStringList& arguments, Options& options);
};

} // namespace frserver
