#include "postgres/postgreslibrary.h"

#include "journalerror.h"
#include "saletr.h"

#include <QLibrary>
#include <QSqlDriver>
#include <QVariant>

namespace sale {

namespace {

template <typename Function>
void resolve(QLibrary& library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(library.resolve(name));
    if (function == nullptr)
        throw JournalError(
            tr("libpq is not there: %1").arg(library.errorString()), tr("install libqt6sql6-psql"));
}

/// A pointer to what only libpq looks into, under whichever name Qt has it.
const void* connectionOf(const QSqlDriver& driver)
{
    const QVariant handle = driver.handle();
    const bool isPointer = handle.metaType().sizeOf() == sizeof(void*);
    return isPointer ? *static_cast<const void* const*>(handle.constData()) : nullptr;
}

} // namespace

const PostgresLibrary& PostgresLibrary::ofProcess()
{
    static const PostgresLibrary library;
    return library;
}

PostgresLibrary::PostgresLibrary()
{
    constexpr int version = 5;
    QLibrary library(QStringLiteral("pq"), version);
    resolve(library, "PQsocket", m_socket);
}

int PostgresLibrary::socketOf(const QSqlDriver& driver) const
{
    const void* const connection = connectionOf(driver);
    return connection == nullptr ? -1 : m_socket(connection);
}

} // namespace sale
