#pragma once

#include "journalerror.h"
#include "sqlitestore.h"

/// A journal that may fail, and whose documents may have been archived.
class FailingStore : public sale::SqliteStore
{
public:
    using SqliteStore::accept;
    using SqliteStore::SqliteStore;

    sale::StoredDocument accept(const sale::DocumentRequest& request, const Condition& condition) override
    {
        requireWhole();
        return SqliteStore::accept(request, condition);
    }
    void requireRoom() override
    {
        requireWhole();
        SqliteStore::requireRoom();
    }
    QList<sale::StoredDocument> find(const sale::DocumentQuery& query) const override
    {
        requireWhole();
        ++findings;
        return SqliteStore::find(query);
    }

    std::optional<QDateTime> archived(const QString& id) const override
    {
        return archivedIds.contains(id)
            ? std::optional(QDateTime::fromString("2026-03-01T12:00:00Z", Qt::ISODate))
            : std::nullopt;
    }

    QStringList archivedIds;
    bool isBroken = false;
    mutable int findings = 0;

private:
    void requireWhole() const
    {
        if (isBroken)
            throw sale::JournalError("the disk is full");
    }
};
