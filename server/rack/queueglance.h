#pragma once

#include <QSet>
#include <QString>

namespace frserver {

/// For which registers nothing waits, as it was seen a moment ago for all of them at once: while all are
/// looked at, each need not be asked about by itself.
class QueueGlance
{
public:
    void open(const QSet<QString>& quiet) { m_quiet = quiet; }
    void close() { m_quiet.clear(); }
    bool isQuiet(const QString& registerName) const { return m_quiet.contains(registerName); }

private:
    QSet<QString> m_quiet;
};

} // namespace frserver
