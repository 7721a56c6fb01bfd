#include "http/connection.h"

#include "http/mhdresponse.h"

#include <QLoggingCategory>

#include <arpa/inet.h>
#include <cstring>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace http {

namespace {

Q_LOGGING_CATEGORY(connectionLog, "http.connection")

const sockaddr* addressOf(MHD_Connection* connection)
{
    return MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CLIENT_ADDRESS)->client_addr;
}

QByteArray digitsOf(const sockaddr* address)
{
    char text[INET6_ADDRSTRLEN] = {};
    const bool isFour = address->sa_family == AF_INET;
    const void* bytes = isFour
        ? static_cast<const void*>(&reinterpret_cast<const sockaddr_in*>(address)->sin_addr)
        : static_cast<const void*>(&reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr);
    const QByteArray digits = inet_ntop(address->sa_family, bytes, text, sizeof text);
    return digits.startsWith("::ffff:") ? digits.mid(7) : digits;
}

MHD_Result addHeader(void* headers, MHD_ValueKind, const char* name, const char* value)
{
    static_cast<Headers*>(headers)->add(name, value);
    return MHD_YES;
}

int secondsOf(Limits::Time time)
{
    return std::max(1, static_cast<int>(time.count() / 1000));
}

/// The system finds out by itself that a client is gone whose line was pulled.
void askWhetherItLives(int socket, const Limits& limits)
{
    const int yes = 1;
    const int quiet = secondsOf(limits.keepAlive);
    const int between = std::max(1, quiet / 3);
    const int times = 3;
    const auto most = static_cast<unsigned>(limits.idle.count());
    ::setsockopt(socket, SOL_SOCKET, SO_KEEPALIVE, &yes, sizeof(yes));
    ::setsockopt(socket, IPPROTO_TCP, TCP_KEEPIDLE, &quiet, sizeof(quiet));
    ::setsockopt(socket, IPPROTO_TCP, TCP_KEEPINTVL, &between, sizeof(between));
    ::setsockopt(socket, IPPROTO_TCP, TCP_KEEPCNT, &times, sizeof(times));
    ::setsockopt(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, &most, sizeof(most));
}

} // namespace

Connection::Connection(ServerState& server, MHD_Connection* connection)
    : m_server(server)
    , m_connection(connection)
    , m_socket(MHD_get_connection_info(connection, MHD_CONNECTION_INFO_CONNECTION_FD)->connect_fd)
    , m_key(Admission::keyOf(addressOf(connection)))
    , m_hungUp([this](bool isGone) { hangUp(isGone); })
{
    m_server.admission.enter(m_key);
    ++m_server.counters.accepted;
    askWhetherItLives(m_socket, m_server.limits);
    enter(Phase::Receiving, m_server.limits.request);
}

Connection::~Connection()
{
    end();
    m_server.admission.leave(m_key, m_showedToken, Clock::now());
}

void Connection::begin(const char* target)
{
    m_target = target;
    // The first one began with the connection.
    if (m_phase == Phase::Idle)
        enter(Phase::Receiving, m_server.limits.request);
}

MHD_Result Connection::handle(const char* method, const char* version, const char* bytes, size_t* size)
{
    if (m_isCut)
        return MHD_NO;
    if (!m_intake)
        return receiveHeader(method, version);
    if (*size > 0) {
        const bool goesOn = m_intake->add(QByteArrayView(bytes, static_cast<qsizetype>(*size)));
        *size = 0;
        return goesOn ? MHD_YES : MHD_NO;
    }
    return m_pending ? wait() : answer();
}

void Connection::end()
{
    if (m_stream) {
        --m_server.counters.streaming;
        m_stream->onReady({});
    }
    m_stream.reset();
    m_timer.reset();
    if (const std::shared_ptr<Pending> pending = std::exchange(m_pending, nullptr)) {
        --m_server.counters.waiting;
        pending->leave();
    }
    m_intake.reset();
    m_portion.clear();
    m_isKeepAliveDue = false;
    enter(Phase::Idle, m_server.limits.idle);
}

void Connection::check(Clock::time_point now)
{
    if (now < m_until || m_phase == Phase::Waiting || m_isCut)
        return;
    if (m_phase == Phase::Quiet) {
        m_isKeepAliveDue = true;
        resume();
        return;
    }
    ++m_server.counters.overdue;
    cut();
}

void Connection::cut()
{
    m_isCut = true;
    ::shutdown(m_socket, SHUT_RDWR);
    resume();
}

void Connection::enter(Phase phase, Limits::Time time)
{
    m_phase = phase;
    m_until = Clock::now() + time;
}

MHD_Result Connection::receiveHeader(const char* method, const char* version)
{
    m_isOld = qstrcmp(version, MHD_HTTP_VERSION_1_0) == 0;
    ++m_server.counters.requests;
    const Request request = parsedRequest(method);
    noteToken(request);
    m_intake = std::make_unique<Intake>(m_server.limits, m_server.bodies, request);
    return m_intake->isHopeless() ? answer() : MHD_YES;
}

Request Connection::parsedRequest(const char* method)
{
    Request request;
    m_unreadable.reset();
    try {
        request = Request::of(method, m_target);
    } catch (const Problem& problem) {
        m_unreadable = problem;
    }
    request.clientAddress = digitsOf(addressOf(m_connection));
    MHD_get_connection_values(m_connection, MHD_HEADER_KIND, &addHeader, &request.headers);
    return request;
}

void Connection::noteToken(const Request& request)
{
    // Where there are no tokens all who ask are callers; who only connects is not.
    const bool isCaller = m_server.site.tokens.isEmpty() || m_server.site.callerOf(request);
    if (m_showedToken || !isCaller)
        return;
    m_showedToken = true;
    m_server.admission.showToken(m_key);
}

MHD_Result Connection::answer()
{
    if (m_intake->problem())
        ++m_server.counters.refusedBodies;
    const std::optional<Problem>& refusal = m_unreadable ? m_unreadable : m_intake->problem();
    if (refusal)
        return respond(m_server.site.refusal(m_intake->request(), *refusal));
    const Request request = m_intake->take();
    const Answer answer = m_server.site.answer(request);
    if (const auto* response = std::get_if<Response>(&answer))
        return respond(*response);
    Headers headers;
    m_server.site.finish(request, headers);
    if (const auto* endless = std::get_if<std::shared_ptr<Stream>>(&answer))
        return stream(*endless, headers);
    m_laterHeaders = headers;
    m_pending = std::get<std::shared_ptr<Pending>>(answer);
    ++m_server.counters.waiting;
    return wait();
}

MHD_Result Connection::wait()
{
    if (m_pending->response())
        return respondLater();
    m_pending->onAnswer([this] { resume(); });
    m_timer = std::make_unique<QTimer>();
    m_timer->setSingleShot(true);
    QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] {
        m_pending->expire();
        resume();
    });
    m_timer->start(m_pending->timeout());
    enter(Phase::Waiting, {});
    suspend();
    return MHD_YES;
}

MHD_Result Connection::respondLater()
{
    Response response = *m_pending->response();
    for (const auto& [name, value] : m_laterHeaders.fields()) {
        if (!response.headers.contains(name))
            response.headers.add(name, value);
    }
    return respond(response);
}

MHD_Result Connection::stream(const std::shared_ptr<Stream>& stream, Headers headers)
{
    m_stream = stream;
    m_stream->onReady([this] { resume(); });
    ++m_server.counters.streaming;
    enter(Phase::Streaming, m_server.limits.idle);
    headers.set("Content-Type", stream->contentType());
    // Proxies hold an answer back until it is large.
    headers.set("X-Accel-Buffering", "no");
    const MhdResponse response = mhdresponse::endless(headers, &Connection::readStream, this);
    return response ? MHD_queue_response(m_connection, MHD_HTTP_OK, response.get()) : MHD_NO;
}

MHD_Result Connection::respond(const Response& response)
{
    enter(Phase::Answering, m_server.limits.idle);
    const MhdResponse made = mhdresponse::whole(response);
    if (!made)
        return MHD_NO;
    return MHD_queue_response(m_connection, static_cast<unsigned>(response.status), made.get());
}

ssize_t Connection::readStream(void* self, uint64_t /*position*/, char* buffer, size_t most)
{
    try {
        return static_cast<Connection*>(self)->read(buffer, most);
    } catch (const std::exception& failure) {
        qCWarning(connectionLog) << "a stream failed:" << failure.what();
        return MHD_CONTENT_READER_END_WITH_ERROR;
    }
}

ssize_t Connection::read(char* buffer, size_t most)
{
    if (m_isCut)
        return MHD_CONTENT_READER_END_WITH_ERROR;
    if (m_portion.isEmpty())
        m_portion = nextPortion();
    if (m_portion.isEmpty() && m_stream->isOver())
        return MHD_CONTENT_READER_END_OF_STREAM;
    if (m_portion.isEmpty()) {
        enter(Phase::Quiet, m_server.limits.keepAlive);
        suspend();
        return 0;
    }
    const qsizetype size = std::min(static_cast<qsizetype>(most), m_portion.size());
    std::memcpy(buffer, m_portion.constData(), static_cast<size_t>(size));
    m_portion.remove(0, size);
    enter(Phase::Streaming, m_server.limits.idle);
    return size;
}

QByteArray Connection::nextPortion()
{
    const QByteArray portion = m_stream->take();
    const bool isKeptAlive = portion.isEmpty() && m_isKeepAliveDue;
    m_isKeepAliveDue = false;
    return isKeptAlive ? m_stream->keepAlive() : portion;
}

void Connection::hangUp(bool isGone)
{
    // A client that closed its half of the line and one that closed it all look the same, until something is
    // sent: the second one's system says that nobody is there. So that is tried at once.
    const bool isStream = m_phase == Phase::Quiet;
    if (isGone || m_isSilent || !(isStream || mayHaveInterimAnswer()))
        return cut();
    m_isSilent = true;
    if (isStream) {
        m_isKeepAliveDue = true;
        return resume();
    }
    const QByteArrayView interim = "HTTP/1.1 102 Processing\r\n\r\n";
    const ssize_t sent
        = ::send(m_socket, interim.data(), static_cast<size_t>(interim.size()), MSG_NOSIGNAL | MSG_DONTWAIT);
    // Half of it would spoil the answer.
    if (sent != interim.size())
        return cut();
    m_server.watch.remove(m_socket);
    m_server.watch.add(m_socket, m_isSilent, &m_hungUp);
}

bool Connection::mayHaveInterimAnswer() const
{
    // It goes past libmicrohttpd, which alone can put it into a session of TLS.
    const bool isPlain = MHD_get_connection_info(m_connection, MHD_CONNECTION_INFO_GNUTLS_SESSION) == nullptr;
    return isPlain && m_phase == Phase::Waiting && !m_isOld;
}

void Connection::suspend()
{
    m_isSuspended = true;
    MHD_suspend_connection(m_connection);
    m_server.watch.add(m_socket, m_isSilent, &m_hungUp);
}

void Connection::resume()
{
    if (!m_isSuspended)
        return;
    m_isSuspended = false;
    m_server.watch.remove(m_socket);
    MHD_resume_connection(m_connection);
    m_server.wake();
}

} // namespace http
