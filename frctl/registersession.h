#pragma once

#include "cashdesk.h"
#include "firstanswer.h"
#include "linetrace.h"
#include "options.h"
#include "registerconnection.h"
#include "task.h"

#include <memory>
#include <optional>

namespace hw {
class AbstractRegisterParameters;
}

namespace frctl {

/// The register at work, from the open port to the closed one.
class RegisterSession
{
public:
    /// Throws UsageError for a port that is none and a trace that cannot be written,
    /// devices::ConnectionError, the driver's exceptions, sale::RegisterTaken before the port is opened.
    explicit RegisterSession(const Options& options);
    ~RegisterSession();
    RegisterSession(const RegisterSession&) = delete;
    RegisterSession& operator=(const RegisterSession&) = delete;

    /// Reaches the register as the task wants it: with what earlier runs left behind settled, or as it is. A
    /// task that makes no document goes on without the journal.
    void connect(const Task& task);
    /// Those that were settled.
    const QList<sale::SettledSale>& settledSales() const { return m_settledSales; }
    /// To be called when the last exchange is over: the next program need not wait for an answer to this one.
    void leaveIdle() { m_connection.leaveIdle(); }
    AbstractFrDriver& driver() { return m_connection.driver(); }
    /// For a task that makes a document, once it is connected.
    sale::CashDesk& desk() { return m_desk.value(); }
    /// Throws HostError where the plugin tells no parameters.
    hw::AbstractRegisterParameters& parameters();

private:
    void reach(const Task& task);
    /// Without the journal when that cannot be read, unless it says that the register is another one's.
    void reachWithoutDocument(bool withInit);

    const Options m_options;
    const std::unique_ptr<LineTrace> m_trace;
    FirstAnswer m_firstAnswer;
    devices::RegisterConnection m_connection;
    std::optional<sale::CashDesk> m_desk;
    QList<sale::SettledSale> m_settledSales;
};

} // namespace frctl
