#pragma once

#include <QString>

namespace frctl {

/// A line on standard error with what lasts and for how many seconds, for a person at a terminal only. It
/// comes after a second, and is gone when this is over. One inside another takes its place meanwhile.
class Progress
{
public:
    explicit Progress(const QString& text, int patienceMs = 1000);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    bool m_isWanted;
};

/// Makes room for what is printed now; the line comes again with its next second.
void hideProgress();

} // namespace frctl
