#pragma once

#include <QHash>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>

namespace frserver {

/// For how long this process itself has seen that nobody works a register. What a table tells of the time
/// before counts for nothing: the database may have been away, or its clock have jumped, and with it all
/// owners seem to have been silent for long.
class LossWatch
{
public:
    /// One that nobody sets.
    using Clock = std::function<std::chrono::milliseconds()>;

    /// Who has not looked for longer than the gap knows nothing any more.
    LossWatch(std::chrono::milliseconds longestGap, const Clock& clock);

    /// What was seen: the registers that nobody works.
    void look(const QStringList& lost);
    /// Nothing could be seen.
    void forget();
    bool isLostFor(const QString& registerName, std::chrono::milliseconds time) const;

private:
    const std::chrono::milliseconds m_longestGap;
    const Clock m_clock;
    QHash<QString, std::chrono::milliseconds> m_since;
    std::optional<std::chrono::milliseconds> m_seen;
};

} // namespace frserver
