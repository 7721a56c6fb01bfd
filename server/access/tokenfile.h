#pragma once

#include "access/tokenentry.h"

#include <QList>

#include <stdexcept>

namespace frserver {

/// The file of tokens cannot be read, written or understood; what() says where and why.
class TokenError : public std::runtime_error
{
public:
    explicit TokenError(const QString& what)
        : std::runtime_error(what.toStdString())
    {
    }
};

/// The tokens that are let in, a line each: name, role, registers, hash of the token. The tokens themselves
/// are nowhere.
class TokenFile
{
public:
    explicit TokenFile(const QString& fileName);

    static const QStringList& roles();

    const QString& fileName() const { return m_fileName; }
    /// Where there is no file, whoever reaches the service is let in; an empty one lets nobody in.
    bool exists() const;
    /// Throws TokenError.
    QList<TokenEntry> read() const;
    /// Gives the new token, which is shown once. Throws TokenError, also for a name that is there.
    QByteArray add(const QString& name, const QString& role, const QStringList& registers);
    /// Throws TokenError, also when there is none of that name.
    void remove(const QString& name);

private:
    TokenEntry entryOf(const QString& line, int number) const;
    void write(const QList<TokenEntry>& entries) const;
    [[noreturn]] void fail(int line, const QString& why) const;

    QString m_fileName;
};

} // namespace frserver
