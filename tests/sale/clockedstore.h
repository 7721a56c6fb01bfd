// A journal whose server has the time that a test gives the host.

#pragma once

#include "currenttime.h"
#include "mockfactory.h"
#include "postgres/postgresstore.h"
#include "storedtime.h"

namespace sale {

class ClockedStore : public PostgresStore
{
public:
    using PostgresStore::PostgresStore;

private:
    QString now() const override
    {
        return MockFactory<CurrentTime>::mocked == nullptr ? PostgresStore::now() : storedNow();
    }
};

} // namespace sale
