#include "registersession.h"

#include "abstractfrdriver.h"
#include "abstractregisterparameters.h"
#include "errors.h"
#include "exceptions.h"
#include "frctltr.h"
#include "interruption.h"
#include "journalerror.h"
#include "messages.h"
#include "portname.h"
#include "registerstart.h"
#include "registertaken.h"
#include "serialdevicefactory.h"
#include "streamdevice.h"

namespace frctl {

namespace {

/// Said at once: some drivers ask five times and more before they give up.
void tellSilence(const Options& options)
{
    const bool isTcp = devices::isTcpName(options.port);
    complain(tr("no answer from %1 over %2 yet, still asking; likely causes: the register is set to "
                "the other protocol (--protocol %3), it has no power, %4")
                 .arg(options.port, options.protocol, options.otherProtocol(),
                     isTcp ? tr("something else listens there")
                           : tr("the cable, another port, another speed in its settings")));
}

/// Of one that has answered before.
void tellPause(const Options& options)
{
    complain(tr("%1 has fallen silent, still waiting; likely causes: it prints, it has no paper, its power "
                "or the cable has gone")
                 .arg(options.port));
}

void tellForeignAnswer(const Options& options)
{
    complain(tr("%1 does not answer over %2 as a register; likely causes: it is set to the other protocol "
                "(--protocol %3), another device is there, another speed in its settings")
                 .arg(options.port, options.protocol, options.otherProtocol()));
}

devices::ConnectionSettings watchedConnection(const Options& options, FirstAnswer& firstAnswer)
{
    devices::ConnectionSettings settings = options.connection();
    settings.waitCallback = throwIfInterrupted;
    settings.silenceCallback = [options](bool hasAnswered) {
        if (hasAnswered)
            tellPause(options);
        else
            tellSilence(options);
    };
    settings.observer = &firstAnswer;
    return settings;
}

const Options& withFreePort(const Options& options)
{
    if (!devices::createSerialDevice(options.port))
        throw UsageError(tr("--port: \"%1\" names no port").arg(options.port));
    options.journal->requireFreeLine(options.port, options.isExclusive);
    return options;
}

} // namespace

RegisterSession::RegisterSession(const Options& options)
    : m_options(withFreePort(options))
    , m_trace(lineTraceOf(options))
    , m_firstAnswer(options.isHex(), m_trace.get())
    , m_connection(watchedConnection(options, m_firstAnswer))
{
    *options.soleConnection = [this] { return m_connection.soleConnection(); };
    *options.repeats = [this] { return m_connection.repeats(); };
}

RegisterSession::~RegisterSession()
{
    *m_options.soleConnection = {};
    *m_options.repeats = {};
}

hw::AbstractRegisterParameters& RegisterSession::parameters()
{
    auto* const parameters = qobject_cast<hw::AbstractRegisterParameters*>(&m_connection.deviceObject());
    if (parameters == nullptr)
        throw HostError(tr("params: this plugin does not tell the register's parameters as data"));
    return *parameters;
}

void RegisterSession::connect(const Task& task)
{
    try {
        reach(task);
    } catch (const BasicException&) {
        if (m_firstAnswer.isForeign())
            tellForeignAnswer(m_options);
        throw;
    }
}

void RegisterSession::reach(const Task& task)
{
    if (task.onDesk) {
        m_desk.emplace(driver(), m_options.journal->store(), m_options.desk());
        m_settledSales = m_desk->open();
    } else {
        reachWithoutDocument(task.withInit);
    }
}

void RegisterSession::reachWithoutDocument(bool withInit)
{
    const auto start = [this, withInit](sale::DocumentStore* journal) {
        const QString name = m_options.registerName();
        if (withInit)
            m_settledSales = sale::startRegister(driver(), journal, m_options.line(), name);
        else
            sale::meetRegister(driver(), journal, m_options.line(), name);
    };
    try {
        start(m_options.journal->exists() ? &m_options.journal->store() : nullptr);
    } catch (const sale::RegisterTaken&) {
        throw;
    } catch (const sale::JournalError& error) {
        m_options.warnings->add({{receipt::Finding::Warning, {}, {},
            tr("sales of earlier runs are not settled: ") + QString::fromUtf8(error.what())}});
        start(nullptr);
    }
}

} // namespace frctl
