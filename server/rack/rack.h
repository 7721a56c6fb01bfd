#pragma once

#include "configuration/registersettings.h"
#include "rack/registeragent.h"

#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>

namespace frserver {

/// The registers of the service, each with its agent.
class Rack : public QObject
{
    Q_OBJECT

public:
    using WorkerFactory = std::function<std::unique_ptr<Worker>()>;

    /// The store must outlive it.
    Rack(const QList<RegisterSettings>& registers, sale::DocumentStore& store,
        const WorkerFactory& createWorker, const RegisterAgent::Options& options);

    void start();
    /// All registers, each behind its document under way; stopped follows.
    void stop();
    const std::map<QString, std::unique_ptr<RegisterAgent>>& agents() const { return m_agents; }

Q_SIGNALS:
    /// Made, settled, or too late.
    void documentChanged(const QString& id);
    void registerChanged(const QString& name);
    void stopped();

private:
    void look();
    bool attempt(const std::function<void()>& work);
    void expire();
    void glance();
    void finish();

    sale::DocumentStore& m_store;
    const std::shared_ptr<Ownership> m_ownership;
    const std::shared_ptr<QueueGlance> m_glance;
    std::map<QString, std::unique_ptr<RegisterAgent>> m_agents;
    /// Of the journal, as it was told last.
    QString m_fault;
    QTimer m_timer;
};

} // namespace frserver
