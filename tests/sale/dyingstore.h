#pragma once

#include "documentstore.h"
#include "journalerror.h"

#include <type_traits>

namespace sale {

/// The journal of a program that is killed at a writing, before it or behind it.
class DyingStore : public DocumentStore
{
public:
    DyingStore(DocumentStore& kept, int writing, bool isBefore, bool& isDead)
        : m_kept(kept)
        , m_left(writing)
        , m_isBefore(isBefore)
        , m_isDead(isDead)
    {
    }

    using DocumentStore::accept;
    StoredDocument accept(const DocumentRequest& request, const Condition& condition) override
    {
        return write([&] { return m_kept.accept(request, condition); });
    }
    std::optional<int> begin(const QString& document, const AttemptStart& start) override
    {
        return write([&] { return m_kept.begin(document, start); });
    }
    std::optional<int> acceptAndBegin(const DocumentRequest& request, const AttemptStart& start) override
    {
        return write([&] { return m_kept.acceptAndBegin(request, start); });
    }
    void note(const QString& document, int attempt, const AttemptNote& note) override
    {
        write([&] { return m_kept.note(document, attempt, note), 0; });
    }
    void settle(const QString& document, int attempt, const DocumentEnding& ending) override
    {
        write([&] { return m_kept.settle(document, attempt, ending), 0; });
    }
    QList<StoredDocument> find(const DocumentQuery& query) const override
    {
        requireAlive();
        return m_kept.find(query);
    }
    QDateTime timeNow() const override { return m_kept.timeNow(); }
    StoredDocument withdraw(const QString& document) override { return m_kept.withdraw(document); }
    StoredDocument move(const QString& document, const QString& till) override
    {
        return m_kept.move(document, till);
    }
    StoredDocument refuse(const QString& document, const AttemptNote& note) override
    {
        return write([&] { return m_kept.refuse(document, note); });
    }
    QStringList expire() override { return m_kept.expire(); }

private:
    template <typename Work>
    std::invoke_result_t<Work> write(const Work& work)
    {
        const bool isLast = --m_left == 0;
        m_isDead = m_isDead || (isLast && m_isBefore);
        requireAlive();
        const auto result = work();
        m_isDead = m_isDead || isLast;
        requireAlive();
        return result;
    }
    void requireAlive() const
    {
        if (m_isDead)
            throw JournalError(QStringLiteral("killed"));
    }

    DocumentStore& m_kept;
    int m_left;
    const bool m_isBefore;
    bool& m_isDead;
};

} // namespace sale
