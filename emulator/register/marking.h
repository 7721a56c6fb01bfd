#pragma once

#include "register/refusal.h"

#include <QByteArray>

namespace emulator {

struct MarkingQuery;
struct Parts;

/// Checks the codes of marked goods and binds them to positions.
class Marking
{
public:
    explicit Marking(Parts& parts)
        : m_parts(parts)
    {
    }

    /// The result has the bits of tag 2106: 1 checked, 2 good, 4 checked by the state's system, 8 good there.
    Refusal check(const MarkingQuery& query, int& result);
    /// For the position that comes next.
    Refusal bind(const QByteArray& code);
    /// Forgets all results.
    Refusal clear();

private:
    Refusal judge(const MarkingQuery& query) const;
    /// What the check of the code comes to.
    int resultOf(const QByteArray& code) const;
    bool isForbidden() const;

    Parts& m_parts;
};

} // namespace emulator
