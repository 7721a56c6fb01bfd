#pragma once

#include <QString>

namespace frserver {

/// Beside the journal: which process serves from it, and what it has to say to whoever keeps it. A lock that
/// ends with the process keeps a second service away.
class RunFile
{
public:
    /// What the service is about to do.
    enum class Phase {
        Serving,
        /// It leaves its place, and finishes what is under way.
        Leaving,
        /// It was told to end.
        Ending
    };

    /// What stands there.
    struct Running
    {
        /// 0 when no service has the journal.
        qint64 process = 0;
        /// Empty while it starts.
        QString version = {};
        /// Another one for each program that is ready to serve, also in the same process.
        qint64 start = 0;
        /// How often it was asked to leave its place to the program in its file, and kept it; why, the last
        /// time.
        int keptPlace = 0;
        QString reason = {};
        Phase phase = Phase::Serving;
    };

    /// Throws std::runtime_error when another service has the journal. Where no file can be made there is
    /// none.
    explicit RunFile(const QString& journal);
    ~RunFile();
    RunFile(const RunFile&) = delete;
    RunFile& operator=(const RunFile&) = delete;

    void tellReady(const QString& version);
    void tellKeptPlace(const QString& reason);
    void tellLeaving() { tell(Phase::Leaving); }
    void tellEnding() { tell(Phase::Ending); }

    /// By whoever asks. Throws std::runtime_error where the file may not be read.
    static Running read(const QString& journal);

private:
    void tell(Phase phase);
    void write() const;

    int m_file;
    Running m_running;
};

/// Throws std::runtime_error when a service of this machine has the journal.
void requireNobodyServes(const QString& journal);

} // namespace frserver
