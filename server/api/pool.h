#pragma once

#include <QString>
#include <QStringList>

namespace frserver {

/// Registers that are posted to together, as the interface works them.
class Pool
{
public:
    /// What the configuration says of it.
    struct Settings
    {
        QString name;
        /// Those of this service.
        QStringList registers = {};
        QString inn = {};
        /// By their names in receipts, which alone it takes; empty for any.
        QStringList taxSystems = {};
        /// Seconds in which a document is begun that says nothing of it; 0 for any time.
        int startBefore = 0;
    };

    explicit Pool(const Settings& settings)
        : m_settings(settings)
    {
    }
    virtual ~Pool() = default;
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    const Settings& settings() const { return m_settings; }
    /// Something was queued.
    virtual void wake() = 0;
    /// Somebody waits for the document, which goes before those that nobody waits for.
    virtual void setAwaited(const QString& id, bool isAwaited) = 0;

private:
    Settings m_settings;
};

} // namespace frserver
