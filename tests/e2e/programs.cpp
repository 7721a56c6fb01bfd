#include "programs.h"

#include "answers.h"
#include "portlock.h"

#include <QFile>
#include <QJsonDocument>

#include <csignal>

namespace {

constexpr int PatienceMs = 30000;

/// No test touches the journal of the machine, nor minds the language of whoever starts it.
class Surroundings
{
public:
    Surroundings()
    {
        qputenv("FRSPF_JOURNAL", m_folder.filePath("sales.sqlite").toLocal8Bit());
        qputenv("LC_ALL", "C.UTF-8");
    }

private:
    QTemporaryDir m_folder;
};

const Surroundings surroundings;

QStringList withPlugin(const QStringList& arguments)
{
    const QStringList plugin{"--plugin", QStringLiteral(SPF_PLUGIN)};
    // The receipts name their own cashier, which one of the command line would replace.
    const bool hasCashier = arguments.contains("sell") || arguments.contains("refund")
        || arguments.contains("preview") || arguments.contains("--cashier");
    return hasCashier ? plugin + arguments : plugin + QStringList{"--cashier", "Иванова"} + arguments;
}

Result resultOf(QProcess& process, QByteArray errors = {})
{
    process.waitForFinished(PatienceMs);
    errors += process.readAllStandardError();
    const QByteArray output = process.readAllStandardOutput();
    if (process.arguments().contains("--json"))
        Answers::collect(process.arguments(), output);
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, output, errors};
}

Result interrupt(const QString& program, const QStringList& arguments, const QByteArray& after, int signal)
{
    QProcess process;
    process.setReadChannel(QProcess::StandardError);
    // Tests that run in the background would hand on what is ignored there.
    process.setChildProcessModifier([signal] { std::signal(signal, SIG_DFL); });
    process.start(program, arguments);
    QByteArray errors;
    while (!errors.contains(after) && process.waitForReadyRead(PatienceMs))
        errors += process.readAllStandardError();
    // One that has ended already has no process: 0 would mean the tests themselves.
    if (process.processId() > 0)
        kill(static_cast<pid_t>(process.processId()), signal);
    return resultOf(process, errors);
}

} // namespace

QByteArray readAll(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString written(const QTemporaryDir& folder, const QString& name, const QByteArray& content)
{
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    return file.fileName();
}

Emulator::Emulator(const QStringList& options)
{
    const QStringList own{"--quiet", "--pty", port(), "--tape", m_dir.filePath("tape"), "--journal",
        m_dir.filePath("journal"), "--conformance", m_dir.filePath("conformance")};
    m_process.setReadChannel(QProcess::StandardError);
    m_process.start(QStringLiteral(SPF_EMULATOR), own + options);
    QByteArray said;
    while (!said.contains("ready") && m_process.waitForReadyRead(PatienceMs))
        said += m_process.readAllStandardError();
    // The pseudo terminal may have been another register's, which owes its host an answer; this one does not.
    devices::PortLock lock;
    if (lock.take(port()))
        lock.leaveIdle();
}

Emulator::~Emulator()
{
    stop();
}

QJsonObject Emulator::stop()
{
    m_process.terminate();
    m_process.waitForFinished(PatienceMs);
    return QJsonDocument::fromJson(readAll(m_dir.filePath("conformance"))).object();
}

QString Emulator::tape() const
{
    return QString::fromUtf8(readAll(m_dir.filePath("tape")));
}

QList<QJsonObject> Emulator::journal() const
{
    QList<QJsonObject> documents;
    for (const QByteArray& line : readAll(m_dir.filePath("journal")).split('\n')) {
        if (!line.isEmpty())
            documents.append(QJsonDocument::fromJson(line).object());
    }
    return documents;
}

QList<QJsonObject> Emulator::sales() const
{
    QList<QJsonObject> documents = journal();
    documents.removeIf([](const QJsonObject& document) { return document.value("type") != "sell"; });
    return documents;
}

Result runFrctl(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(FRCTL), withPlugin(arguments));
    return resultOf(process);
}

Result runShell(const QString& script)
{
    QProcess process;
    process.start(QStringLiteral("bash"), {"-c", script});
    return resultOf(process);
}

Result interruptFrctl(const QStringList& arguments, const QByteArray& after, int signal)
{
    return interrupt(QStringLiteral(FRCTL), withPlugin(arguments), after, signal);
}

Result interruptShell(const QString& script, const QByteArray& after, int signal)
{
    return interrupt(QStringLiteral("bash"), {"-c", script}, after, signal);
}
