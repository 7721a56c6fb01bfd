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

    sale::StoredDocument accept(const sale::DocumentRequest& request) override;
    std::optional<int> begin(const QString& id, const sale::AttemptStart& start) override;
    void note(const QString& id, int attempt, const sale::AttemptNote& note) override;
    void settle(const QString& id, int attempt, const sale::DocumentEnding& ending) override;
    QList<sale::StoredDocument> find(const sale::DocumentQuery& query) const override;

private:
    void mayDie();

    sale::DocumentStore& m_kept;
    FaultyLine& m_line;
    Random* m_random = nullptr;
    int m_permille = 0;
};
