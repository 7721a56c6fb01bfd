#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace sale {

/// The questions of this process that servers have still to answer. One that stands still takes what it is
/// asked and says nothing, and nobody else ends the wait for that: the connection of a question that is not
/// answered in time is ended from here, and whoever asked goes on as behind any other loss.
class AnswerWatch
{
public:
    static AnswerWatch& ofProcess();
    ~AnswerWatch();

    /// Of the connection that is asked; negative while there is none.
    using Socket = std::function<int()>;

    /// One that is under way as long as this is there.
    class Question
    {
    public:
        /// The socket is asked for by another thread. Time in which this process itself was stopped does not
        /// count.
        Question(const Socket& socket, std::chrono::milliseconds longest);
        ~Question();
        Question(const Question&) = delete;
        Question& operator=(const Question&) = delete;

        /// Its connection was ended.
        bool isGivenUp() const;

    private:
        friend class AnswerWatch;

        void look();

        const Socket m_socket;
        std::chrono::milliseconds m_left;
        int m_seen = -1;
        bool m_isGivenUp = false;
    };

private:
    AnswerWatch() = default;

    void add(Question& question);
    void remove(Question& question);
    void run();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::vector<Question*> m_questions;
    /// Since it looked last.
    bool m_wasAsked = false;
    bool m_isIdle = false;
    bool m_isEnding = false;
    std::thread m_thread;
};

} // namespace sale
