#pragma once

#include "sqlstore.h"

#include <QString>

#include <exception>
#include <memory>

namespace frctl {

/// The journal of this run: found and opened when it is needed for the first time, since most commands do
/// without.
class JournalAccess
{
public:
    /// A file, or the address of a database. An empty name means the journal of this machine, the one that
    /// its service uses; into a file the one of an earlier release is taken over.
    explicit JournalAccess(const QString& fileName = {})
        : m_fileName(fileName)
    {
    }

    /// Throws JournalError. A file that is not there is made.
    sale::SqlStore& store();
    /// False when no document of ours was ever written down. Throws JournalError.
    bool exists() const;
    /// Throws JournalError where one that is not there could not be made.
    void requirePlace() const;
    /// To be called before the port is opened. Throws sale::RegisterTaken when another machine of those that
    /// share the journal works the register there. Without a journal that can be read nothing is known of
    /// that. An exclusive register drops the connection that it had, with what a network has of it.
    void requireFreeLine(const QString& port, bool isExclusive);
    /// It could not be opened in this run.
    bool isLost() const { return m_fault != nullptr; }

private:
    std::unique_ptr<sale::SqlStore> opened() const;
    QString place() const;

    QString m_fileName;
    std::unique_ptr<sale::SqlStore> m_store;
    std::exception_ptr m_fault;
};

} // namespace frctl
