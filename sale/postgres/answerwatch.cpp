#include "postgres/answerwatch.h"

#include "postgres/blockedsignals.h"

#include <sys/socket.h>

#include <algorithm>
#include <utility>

namespace sale {

namespace {

constexpr std::chrono::milliseconds tick{100};

} // namespace

AnswerWatch& AnswerWatch::ofProcess()
{
    static AnswerWatch watch;
    return watch;
}

AnswerWatch::~AnswerWatch()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_wake.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

AnswerWatch::Question::Question(const Socket& socket, std::chrono::milliseconds longest)
    : m_socket(socket)
    , m_left(longest)
{
    ofProcess().add(*this);
}

AnswerWatch::Question::~Question()
{
    ofProcess().remove(*this);
}

bool AnswerWatch::Question::isGivenUp() const
{
    const std::lock_guard lock(ofProcess().m_mutex);
    return m_isGivenUp;
}

/// Seen twice it is that of a connection that stands: one that fails while it is made is gone at once.
void AnswerWatch::Question::look()
{
    m_left -= std::min(m_left, tick);
    if (m_left.count() > 0 || m_isGivenUp)
        return;
    const int socket = m_socket();
    if (socket >= 0 && std::exchange(m_seen, socket) == socket)
        m_isGivenUp = ::shutdown(socket, SHUT_RDWR) == 0;
}

void AnswerWatch::add(Question& question)
{
    const std::lock_guard lock(m_mutex);
    if (!m_thread.joinable()) {
        const BlockedSignals blocked;
        m_thread = std::thread([this] { run(); });
    }
    m_questions.push_back(&question);
    m_wasAsked = true;
    // Most questions are answered before anybody would look.
    if (m_isIdle)
        m_wake.notify_one();
}

void AnswerWatch::remove(Question& question)
{
    const std::lock_guard lock(m_mutex);
    m_questions.erase(std::find(m_questions.begin(), m_questions.end(), &question));
}

void AnswerWatch::run()
{
    std::unique_lock lock(m_mutex);
    while (!m_isEnding) {
        m_isIdle = !std::exchange(m_wasAsked, false) && m_questions.empty();
        if (m_isIdle)
            m_wake.wait(lock, [this] { return m_isEnding || !m_questions.empty(); });
        m_isIdle = false;
        m_wake.wait_for(lock, tick, [this] { return m_isEnding; });
        for (Question* const question : m_questions)
            question->look();
    }
}

} // namespace sale
