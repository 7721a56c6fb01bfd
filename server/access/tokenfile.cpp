#include "access/tokenfile.h"

#include "http/tokens.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace frserver {

namespace {

const QString allRegisters = QStringLiteral("*");

bool isName(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("\\A[A-Za-z0-9._-]{1,64}\\z"));
    return form.match(text).hasMatch();
}

bool isHash(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("\\A[0-9a-f]{64}\\z"));
    return form.match(text).hasMatch();
}

QByteArray lineOf(const TokenEntry& entry)
{
    const QString registers
        = entry.registers.isEmpty() ? allRegisters : entry.registers.join(QLatin1Char(','));
    return QStringList{entry.name, entry.role, registers, QString::fromLatin1(entry.hash)}
               .join(QLatin1Char(' '))
               .toUtf8()
        + '\n';
}

/// The service that reads it has a user of its own, whom its folder belongs to; the administrator that adds a
/// token is another one.
void giveToOwnerOf(const QString& folder, int file)
{
    struct stat owner
    {
    };
    if (::stat(QFile::encodeName(folder).constData(), &owner) == 0)
        (void)!::fchown(file, owner.st_uid, owner.st_gid);
}

auto placeOf(QList<TokenEntry>& entries, const QString& name)
{
    return std::find_if(
        entries.begin(), entries.end(), [&name](const TokenEntry& entry) { return entry.name == name; });
}

} // namespace

TokenFile::TokenFile(const QString& fileName)
    : m_fileName(fileName)
{
}

const QStringList& TokenFile::roles()
{
    static const QStringList roles{QStringLiteral("read"), QStringLiteral("sell"), QStringLiteral("admin")};
    return roles;
}

bool TokenFile::exists() const
{
    // One that cannot be looked at must not open the service.
    struct stat found
    {
    };
    return ::lstat(QFile::encodeName(m_fileName).constData(), &found) == 0
        || (errno != ENOENT && errno != ENOTDIR);
}

QList<TokenEntry> TokenFile::read() const
{
    QFile file(m_fileName);
    if (!exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        throw TokenError(QStringLiteral("%1: %2").arg(m_fileName, file.errorString()));
    QList<TokenEntry> entries;
    int number = 0;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        ++number;
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        entries.append(entryOf(line, number));
    }
    return entries;
}

TokenEntry TokenFile::entryOf(const QString& line, int number) const
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    const QStringList words = line.split(blanks);
    if (words.size() != 4)
        fail(number, QStringLiteral("is not NAME ROLE REGISTERS HASH"));
    if (!isName(words.at(0)))
        fail(number, QStringLiteral("the name is not 1 to 64 of A-Z a-z 0-9 . _ -"));
    if (!roles().contains(words.at(1)))
        fail(number, QStringLiteral("the role is none of read, sell, admin"));
    if (!isHash(words.at(3)))
        fail(number, QStringLiteral("the hash is not 64 hexadecimal digits"));
    const QStringList registers
        = words.at(2) == allRegisters ? QStringList() : words.at(2).split(QLatin1Char(','));
    return {words.at(0), words.at(1), registers, words.at(3).toLatin1()};
}

QByteArray TokenFile::add(const QString& name, const QString& role, const QStringList& registers)
{
    if (!isName(name))
        throw TokenError(QStringLiteral("the name \"%1\" is not 1 to 64 of A-Z a-z 0-9 . _ -").arg(name));
    if (!roles().contains(role))
        throw TokenError(QStringLiteral("the role \"%1\" is none of read, sell, admin").arg(role));
    QList<TokenEntry> entries = read();
    if (placeOf(entries, name) != entries.end())
        throw TokenError(QStringLiteral("%1 has a token already; remove it first").arg(name));
    const QByteArray token = http::Tokens::fresh();
    entries.append({name, role, registers, http::Tokens::hashOf(token)});
    write(entries);
    return token;
}

void TokenFile::remove(const QString& name)
{
    QList<TokenEntry> entries = read();
    const auto place = placeOf(entries, name);
    if (place == entries.end())
        throw TokenError(QStringLiteral("%1 has no token").arg(name));
    entries.erase(place);
    write(entries);
}

void TokenFile::write(const QList<TokenEntry>& entries) const
{
    const QString folder = QFileInfo(m_fileName).absolutePath();
    QDir().mkpath(folder);
    QSaveFile file(m_fileName);
    QByteArray text(
        "# Tokens of frserver: name, role, registers, SHA-256 of the token. See frserver token.\n");
    for (const TokenEntry& entry : entries)
        text += lineOf(entry);
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        giveToOwnerOf(folder, file.handle());
    }
    if (!isOpen || file.write(text) != text.size() || !file.commit())
        throw TokenError(QStringLiteral("%1: %2").arg(m_fileName, file.errorString()));
}

void TokenFile::fail(int line, const QString& why) const
{
    throw TokenError(QStringLiteral("%1:%2: %3").arg(m_fileName).arg(line).arg(why));
}

} // namespace frserver
