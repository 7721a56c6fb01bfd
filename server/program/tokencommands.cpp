#include "program/tokencommands.h"

#include <cstdio>

namespace frserver {

namespace {

void sayWhen()
{
    std::fputs("frserver: a service that runs reads it on SIGHUP (systemctl reload frserver)\n", stderr);
}

int add(const Options& options, TokenFile& tokens)
{
    const bool isFirst = !tokens.exists();
    const QByteArray token = tokens.add(options.name, options.role, options.registers);
    // The token alone, so that a script can take it.
    std::printf("%s\n", token.constData());
    std::fprintf(stderr,
        "frserver: this is the token of %s, shown once; clients send it as \"Authorization: Bearer TOKEN\"\n",
        qPrintable(options.name));
    if (isFirst)
        std::fputs("frserver: it is the first one: nobody is let in without a token now\n", stderr);
    sayWhen();
    return 0;
}

int list(const TokenFile& tokens)
{
    const QList<TokenEntry> entries = tokens.read();
    for (const TokenEntry& entry : entries) {
        const QString registers = entry.registers.isEmpty() ? QStringLiteral("all registers")
                                                            : entry.registers.join(QStringLiteral(", "));
        std::printf("%s  %s  %s\n", qPrintable(entry.name), qPrintable(entry.role), qPrintable(registers));
    }
    return 0;
}

int remove(const Options& options, TokenFile& tokens)
{
    tokens.remove(options.name);
    if (tokens.read().isEmpty())
        std::fprintf(stderr,
            "frserver: that was the last one: nobody is let in now; to let this machine in without, remove %s and "
            "start the service anew\n",
            qPrintable(tokens.fileName()));
    sayWhen();
    return 0;
}

} // namespace

int runTokenCommand(const Options& options, TokenFile& tokens)
{
    switch (options.command) {
    case Options::Command::AddToken:
        return add(options, tokens);
    case Options::Command::RemoveToken:
        return remove(options, tokens);
    default:
        return list(tokens);
    }
}

} // namespace frserver
