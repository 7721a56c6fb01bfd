#pragma once

#include "http/answer.h"
#include "http/intake.h"
#include "http/serverstate.h"

#include <QTimer>

#include <memory>

#include <microhttpd.h>

namespace http {

/// One connection of a client, and the request that is under way on it.
class Connection
{
public:
    using Clock = Admission::Clock;

    Connection(ServerState& server, MHD_Connection* connection);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// The request line has come.
    void begin(const char* target);
    /// The header has come, or a part of the body, or (with neither) all of it, or the answer that it waits
    /// for.
    MHD_Result handle(const char* method, const char* version, const char* bytes, size_t* size);
    /// The answer was sent, or could not be.
    void end();
    /// Cuts the line when it is time, or has a stream send something.
    void check(Clock::time_point now);
    /// Cuts the line.
    void cut();

private:
    /// What the time until m_until is for.
    enum class Phase { Receiving, Waiting, Answering, Streaming, Quiet, Idle };

    void enter(Phase phase, Limits::Time time);
    MHD_Result receiveHeader(const char* method, const char* version);
    Request parsedRequest(const char* method);
    void noteToken(const Request& request);
    MHD_Result answer();
    MHD_Result wait();
    MHD_Result respondLater();
    MHD_Result stream(const std::shared_ptr<Stream>& stream, Headers headers);
    MHD_Result respond(const Response& response);
    static ssize_t readStream(void* self, uint64_t position, char* buffer, size_t most);
    ssize_t read(char* buffer, size_t most);
    QByteArray nextPortion();
    /// The client is gone, or sends no more and may still want its answer.
    void hangUp(bool isGone);
    bool mayHaveInterimAnswer() const;
    void suspend();
    void resume();

    ServerState& m_server;
    MHD_Connection* m_connection;
    int m_socket;
    QByteArray m_key;
    bool m_showedToken = false;
    QByteArray m_target;
    std::optional<Problem> m_unreadable;
    std::unique_ptr<Intake> m_intake;
    std::shared_ptr<Pending> m_pending;
    /// What the answer that comes later has besides its own.
    Headers m_laterHeaders;
    std::unique_ptr<QTimer> m_timer;
    std::shared_ptr<Stream> m_stream;
    QByteArray m_portion;
    bool m_isKeepAliveDue = false;
    bool m_isSuspended = false;
    bool m_isCut = false;
    Phase m_phase = Phase::Receiving;
    Clock::time_point m_until;
    /// It has sent all that it will.
    bool m_isSilent = false;
    bool m_isOld = false;
    HangUpWatch::Callback m_hungUp;
};

} // namespace http
