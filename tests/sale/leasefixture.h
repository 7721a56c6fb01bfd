// Registers with owners, over a PostgreSQL server of the tests' own.

#pragma once

#include "journalerror.h"
#include "postgres/registerleases.h"
#include "postgres/workertable.h"
#include "postgresfixture.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace sale {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Another process of this machine, stopped as SIGSTOP does it or at work.
class Child
{
public:
    Child()
        : m_process(::fork())
    {
        if (m_process == 0) {
            ::pause();
            ::_exit(0);
        }
    }
    ~Child()
    {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void stop() const
    {
        ::kill(m_process, SIGSTOP);
        siginfo_t info;
        ::waitid(P_PID, static_cast<id_t>(m_process), &info, WSTOPPED | WNOWAIT);
    }
    /// Nobody takes its status, as a parent that is stopped itself.
    void die() const
    {
        ::kill(m_process, SIGKILL);
        siginfo_t info;
        ::waitid(P_PID, static_cast<id_t>(m_process), &info, WEXITED | WNOWAIT);
    }
    ProcessIdentity identity() const { return ProcessIdentity::ofProcess(m_process); }

private:
    const pid_t m_process;
};

class Lease : public Postgres
{
protected:
    RegisterLeases leases(seconds term = seconds(60))
    {
        return RegisterLeases(server.place(), term, [this] { return now; });
    }
    /// As if the database's clock had come to its end.
    void runOut() { connection.execute("UPDATE leases SET until = now() - interval '1 s'"); }
    /// The owner is that process.
    void ownedBy(const ProcessIdentity& process)
    {
        connection.execute("UPDATE leases SET machine = ?, space = ?, process = ?, started = ?",
            {process.machine, process.space, process.process, process.started});
    }
    /// A worker of that process stands in the table.
    void addWorker(const ProcessIdentity& process, qint64 epoch, bool doesLineLast = false)
    {
        connection.execute("INSERT INTO workers VALUES ('till1', ?, ?, ?, ?, ?, NULL, ?)",
            {epoch, process.machine, process.space, process.process, process.started, doesLineLast});
    }
    int workers() { return connection.value("SELECT count(*) FROM workers").toInt(); }
    static ProcessIdentity elsewhere() { return {"other", "boot/pid:[4026531836]", 7, 70}; }

    milliseconds now{1'000'000};
    const RegisterLeases::Wish till1{"till1"};
};

} // namespace sale
