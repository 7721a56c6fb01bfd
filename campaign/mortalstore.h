#pragma once

#include "documentstore.h"
#include "faultyline.h"

/// A journal as a program has it that may be killed: what was written stays, and a dead program writes
/// nothing.
class MortalStore : public sale::DocumentStore
{
public:
    /// Both must outlive it. The line knows whether the host's program lives.
    MortalStore(sale::DocumentStore& kept, FaultyLine& line)
        : m_kept(kept)
        , m_line(line)
    {
    }

    /// From now on, that many of a thousand writings kill the program before them, and as many behind them.
    void setKills(Random* random, int permille);

    using sale::DocumentStore::accept;
    sale::StoredDocument accept(const sale::DocumentRequest& request, const Condition& condition) override;
    std::optional<int> begin(const QString& id, const sale::AttemptStart& start) override;
    std::optional<int> acceptAndBegin(
        const sale::DocumentRequest& request, const sale::AttemptStart& start) override;
    void note(const QString& id, int attempt, const sale::AttemptNote& note) override;
    void settle(const QString& id, int attempt, const sale::DocumentEnding& ending) override;
    QList<sale::StoredDocument> find(const sale::DocumentQuery& query) const override;
    QDateTime timeNow() const override { return m_kept.timeNow(); }
    sale::StoredDocument withdraw(const QString& id) override;
    sale::StoredDocument move(const QString& id, const QString& registerName) override;
    sale::StoredDocument refuse(const QString& id, const sale::AttemptNote& note) override;
    QStringList expire() override;

private:
    void mayDie();
    /// What is written, between two moments at which the program may die.
    template <typename Work>
    auto mortal(const Work& work)
    {
        mayDie();
        const auto result = work();
        mayDie();
        return result;
    }

    sale::DocumentStore& m_kept;
    FaultyLine& m_line;
    Random* m_random = nullptr;
    int m_permille = 0;
};
