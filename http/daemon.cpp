#include "http/daemon.h"

#include "http/listenerror.h"
#include "http/tlsmaterial.h"

#include <QLoggingCategory>
#include <QScopedValueRollback>

#include <cstdarg>
#include <cstdio>

namespace http {

namespace {

Q_LOGGING_CATEGORY(daemonLog, "http.daemon", QtWarningMsg)

/// Clients' mistakes for the most part.
[[gnu::format(printf, 2, 0)]] void log(void* /*context*/, const char* format, va_list values)
{
    std::array<char, 256> line{};
    std::vsnprintf(line.data(), line.size(), format, values);
    qCDebug(daemonLog).noquote() << QByteArray(line.data()).trimmed();
}

Connection* ours(MHD_Connection* connection)
{
    const MHD_ConnectionInfo* info = MHD_get_connection_info(connection, MHD_CONNECTION_INFO_SOCKET_CONTEXT);
    return static_cast<Connection*>(info->socket_context);
}

/// Whose handshakes they are: the library tells a daemon of a connection, and not of a session.
thread_local const TlsMaterial* shown = nullptr;

int show(gnutls_session_t /*session*/, const gnutls_datum_t* /*authorities*/, int /*authorityCount*/,
    const gnutls_pk_algorithm_t* /*algorithms*/, int /*algorithmCount*/, gnutls_pcert_st** certificates,
    unsigned* count, gnutls_privkey_t* key)
{
    *certificates = const_cast<gnutls_pcert_st*>(shown->sent.data());
    *count = shown->count;
    *key = shown->key;
    return 0;
}

/// The last one is the end.
std::array<MHD_OptionItem, 3> tlsOptions()
{
    return {{{MHD_OPTION_HTTPS_CERT_CALLBACK, 0, reinterpret_cast<void*>(&show)},
        {MHD_OPTION_HTTPS_PRIORITIES, 0, const_cast<char*>("NORMAL:-VERS-ALL:+VERS-TLS1.3:+VERS-TLS1.2")},
        {MHD_OPTION_END, 0, nullptr}}};
}

/// How late a line may be cut.
Limits::Time sweepInterval(const Limits& limits)
{
    constexpr Limits::Time least(10);
    constexpr Limits::Time most(250);
    const Limits::Time shortest = std::min({limits.request, limits.idle, limits.keepAlive});
    return std::clamp(shortest / 10, least, most);
}

} // namespace

Daemon::Daemon(
    const Site& site, const Limits& limits, int listening, const std::shared_ptr<const TlsIdentity>& identity)
    : m_state(site, limits)
{
    if (identity)
        m_identities.push_back(identity);
    start(listening);
    const int epoll = MHD_get_daemon_info(m_daemon, MHD_DAEMON_INFO_EPOLL_FD)->epoll_fd;
    m_notifier = std::make_unique<QSocketNotifier>(epoll, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, &m_timeout, [this] { run(); });
    m_timeout.setSingleShot(true);
    m_state.wake = [this] {
        m_isWoken = true;
        m_timeout.start(0);
    };
    QObject::connect(&m_timeout, &QTimer::timeout, &m_timeout, [this] { run(); });
    m_sweeper.setInterval(sweepInterval(limits));
    QObject::connect(&m_sweeper, &QTimer::timeout, &m_sweeper, [this] { sweep(); });
}

Daemon::~Daemon()
{
    m_notifier.reset();
    for (const auto& [key, connection] : m_connections)
        connection->cut();
    // The daemon may not be stopped while one of them is suspended.
    runLibrary();
    MHD_stop_daemon(m_daemon);
}

void Daemon::setIdentity(const std::shared_ptr<const TlsIdentity>& identity)
{
    m_identities.push_back(identity);
}

Counters Daemon::counters() const
{
    Counters counters = m_state.counters;
    counters.connections = m_state.admission.connections();
    return counters;
}

void Daemon::start(int listening)
{
    // Ours is the one that counts; beyond its own the library would leave clients waiting.
    constexpr unsigned slack = 64;
    const Limits& limits = m_state.limits;
    const bool isPlain = m_identities.empty();
    const unsigned flags = MHD_USE_EPOLL | MHD_ALLOW_SUSPEND_RESUME | MHD_USE_ERROR_LOG
        | (isPlain ? 0U : static_cast<unsigned>(MHD_USE_TLS));
    std::array<MHD_OptionItem, 3> tls = tlsOptions();
    m_daemon = MHD_start_daemon(flags, 0, &Daemon::accept, this, &Daemon::handle, this,
        MHD_OPTION_EXTERNAL_LOGGER, &log, nullptr, MHD_OPTION_LISTEN_SOCKET, listening,
        MHD_OPTION_CONNECTION_LIMIT, static_cast<unsigned>(limits.connections) + slack,
        MHD_OPTION_CONNECTION_MEMORY_LIMIT, static_cast<size_t>(limits.connectionMemory),
        MHD_OPTION_STRICT_FOR_CLIENT, 1, MHD_OPTION_NOTIFY_CONNECTION, &Daemon::notify, this,
        MHD_OPTION_NOTIFY_COMPLETED, &Daemon::complete, this, MHD_OPTION_URI_LOG_CALLBACK, &Daemon::begin,
        this, MHD_OPTION_ARRAY, isPlain ? &tls.back() : tls.data(), MHD_OPTION_END);
    if (!m_daemon)
        throw ListenError("libmicrohttpd does not start");
}

void Daemon::run()
{
    // A handler may run an event loop of its own.
    if (m_isRunning)
        return;
    m_isRunning = true;
    m_isWoken = false;
    runLibrary();
    m_isRunning = false;
    MHD_UNSIGNED_LONG_LONG milliseconds = 0;
    if (m_isWoken || MHD_get_timeout(m_daemon, &milliseconds) == MHD_YES)
        m_timeout.start(Limits::Time(milliseconds));
    else
        m_timeout.stop();
}

void Daemon::runLibrary()
{
    const TlsMaterial* material = m_identities.empty() ? nullptr : &m_identities.back()->material();
    const QScopedValueRollback<const TlsMaterial*> whileItRuns(shown, material);
    MHD_run(m_daemon);
}

void Daemon::sweep()
{
    const auto now = Connection::Clock::now();
    for (const auto& [key, connection] : m_connections)
        connection->check(now);
}

void Daemon::enter(MHD_Connection* connection, void** context)
{
    auto made = std::make_unique<Connection>(m_state, connection);
    *context = made.get();
    m_connections.emplace(connection, std::move(made));
    if (!m_sweeper.isActive())
        m_sweeper.start();
}

void Daemon::leave(MHD_Connection* connection)
{
    m_connections.erase(connection);
    if (m_connections.empty())
        m_sweeper.stop();
}

MHD_Result Daemon::accept(void* self, const sockaddr* address, socklen_t /*size*/)
{
    ServerState& state = static_cast<Daemon*>(self)->m_state;
    if (state.admission.mayEnter(Admission::keyOf(address), Connection::Clock::now()))
        return MHD_YES;
    ++state.counters.refused;
    return MHD_NO;
}

void Daemon::notify(
    void* self, MHD_Connection* connection, void** context, MHD_ConnectionNotificationCode code)
{
    auto* daemon = static_cast<Daemon*>(self);
    if (code == MHD_CONNECTION_NOTIFY_STARTED)
        daemon->enter(connection, context);
    else
        daemon->leave(connection);
}

void* Daemon::begin(void* /*self*/, const char* target, MHD_Connection* connection)
{
    ours(connection)->begin(target);
    return nullptr;
}

MHD_Result Daemon::handle(void* /*self*/, MHD_Connection* connection, const char* /*url*/, const char* method,
    const char* version, const char* bytes, size_t* size, void** /*context*/)
{
    return ours(connection)->handle(method, version, bytes, size);
}

void Daemon::complete(
    void* /*self*/, MHD_Connection* connection, void** /*context*/, MHD_RequestTerminationCode /*code*/)
{
    ours(connection)->end();
}

} // namespace http
