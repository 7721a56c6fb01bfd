// Traces of real programs: what they hold, and that they can be played again.

#include "programs.h"
#include "trace/frames.h"
#include "trace/hexframe.h"
#include "trace/traceline.h"
#include "trace/tracereader.h"

#include <QDir>
#include <QJsonArray>

#include <gtest/gtest.h>

namespace {

constexpr int patienceMs = 30000;

/// frctl as the register of a trace, from construction to finish.
class PlayedRegister
{
public:
    explicit PlayedRegister(const QString& trace)
    {
        m_process.setReadChannel(QProcess::StandardError);
        m_process.start(QStringLiteral(FRCTL), {"trace", "replay", trace, "--as", "register", port()});
        QByteArray said;
        while (!said.contains("ready") && m_process.waitForReadyRead(patienceMs))
            said += m_process.readAllStandardError();
    }

    QString port() const { return m_folder.filePath("register"); }
    Result finish()
    {
        m_process.waitForFinished(patienceMs);
        const QByteArray output = m_process.readAllStandardOutput();
        return {m_process.exitCode(), output, m_process.readAllStandardError()};
    }

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

/// The commands that made a trace of that name.
QList<QStringList> commandsOf(const QString& name)
{
    QList<QStringList> commands;
    const QByteArray table = readAll(QStringLiteral(FRSPF_SOURCES "/tests/traces/commands"));
    for (const QString& line : QString::fromUtf8(table).split('\n')) {
        const QStringList words = line.split(' ');
        if (words.constFirst() + ".trace" == name)
            commands.append(QStringList{"--protocol"} + words.mid(1));
    }
    return commands;
}

class RecordedTrace : public testing::TestWithParam<QString>
{
};

// The driver sends what it sent when the trace was made, and takes the answers as it did.
TEST_P(RecordedTrace, DriverDoesAsItDid)
{
    QDir::setCurrent(QStringLiteral(FRSPF_SOURCES));
    QTemporaryDir folder;
    const QString file = QStringLiteral(FRSPF_SOURCES "/tests/traces/") + GetParam();
    const QString again = folder.filePath("again");
    PlayedRegister device(file);
    const QList<QStringList> commands = commandsOf(GetParam());
    ASSERT_FALSE(commands.isEmpty());
    // Another name than that of the trace: its stand-ins mean any.
    for (const QStringList& command : commands)
        runFrctl(QStringList{"--port", device.port(), "--cashier", "Ли", "--journal",
                     folder.filePath("journal"), "--trace", again}
            + command);
    const Result played = device.finish();
    EXPECT_EQ(played.status, 0) << played.output.constData();
    const Result same = runFrctl({"trace", "diff", file, again});
    EXPECT_EQ(same.output.trimmed().toStdString(), "the same");
}

INSTANTIATE_TEST_SUITE_P(Traces, RecordedTrace,
    testing::ValuesIn(QDir(QStringLiteral(FRSPF_SOURCES "/tests/traces")).entryList({"*.trace"})),
    [](const testing::TestParamInfo<QString>& parameter) {
        return QString(parameter.param).remove(".trace").replace('-', '_').toStdString();
    });

const QStringList people{"buyer@", "Иванова", "772100000040", "electronic-sale"};

/// Names of people that the bytes or the words of a trace tell.
QStringList toldBy(const QByteArray& text)
{
    QString all = QString::fromUtf8(text);
    for (const trace::Frame& frame : trace::readTrace(text).frames)
        all += QString::fromUtf8(frame.bytes);
    QStringList told = people;
    told.removeIf([&all](const QString& name) { return !all.contains(name); });
    return told;
}

TEST(Trace, BothSidesWriteTheSame)
{
    for (const char* const protocol : {"HEX", "XML"}) {
        SCOPED_TRACE(protocol);
        QTemporaryDir folder;
        const QString ours = folder.filePath("ours");
        const QString full = folder.filePath("full");
        const QString theirs = folder.filePath("theirs");
        {
            Emulator emulator({"--trace", theirs});
            const QStringList selling{"--port", emulator.port(), "--protocol", protocol, "sell",
                FRSPF_EXAMPLES "/electronic-sale.json", "--trace"};
            EXPECT_EQ(runFrctl(selling + QStringList{ours}).status, 0);
            EXPECT_EQ(runFrctl({"trace", "diff", ours, theirs}).output.trimmed(), "the same");
            EXPECT_EQ(runFrctl(selling + QStringList{full, "--trace-full"}).status, 0);
        }
        EXPECT_EQ(toldBy(readAll(ours)), QStringList());
        EXPECT_EQ(toldBy(readAll(theirs)), QStringList());
        EXPECT_NE(toldBy(readAll(full)), QStringList());
        EXPECT_EQ(runFrctl({"--json", "trace", "diff", ours, full}).status, 1);
        const Result shown = runFrctl({"--json", "trace", "show", ours});
        EXPECT_EQ(shown.status, 0);
        EXPECT_FALSE(shown.json().value("frames").toArray().isEmpty());
        // The same register once more, from its first day on.
        Emulator other({"--drive", "9999000000000017"});
        const Result played = runFrctl({"--json", "trace", "replay", ours, "--as", "host", other.port()});
        const QJsonObject json = played.json();
        EXPECT_EQ(json.value("played"), json.value("requests"));
        // It has another drive.
        EXPECT_EQ(played.status, 1);
        EXPECT_EQ(other.sales().size(), 1);
    }
}

/// A trace of these frames.
QString traceFile(const QTemporaryDir& folder, const QList<trace::Frame>& frames)
{
    QByteArray text = trace::traceline::head(true);
    for (const trace::Frame& frame : frames)
        text += trace::traceline::frame(frame, "a frame");
    return written(folder, "made.trace", text);
}

// The register shows what is bad in a request, and the trace of it must not.
TEST(Trace, ReasonsOfRefusalsAreMasked)
{
    QTemporaryDir folder;
    const QString theirs = folder.filePath("theirs");
    const QString wrong = traceFile(folder,
        {frames::toRegister(frames::request(' ', "A7")),
            frames::toRegister(frames::request('!', "00", "010326,090000,")),
            frames::toRegister(frames::request('"', "6B", "Иванова,772100000040772100000040,"))});
    Emulator emulator({"--trace", theirs});
    runFrctl({"trace", "replay", wrong, "--as", "host", emulator.port()});
    emulator.stop();
    const QByteArray text = readAll(theirs);
    EXPECT_TRUE(text.contains("# refused: 6B: field 2 is 12 digits at most\n")) << text.constData();
    EXPECT_EQ(toldBy(text), QStringList());
}

TEST(Trace, ReplayThatTheRegisterRefusesTellsWhatItWants)
{
    QTemporaryDir folder;
    const QString opening = traceFile(folder,
        {frames::toRegister(frames::request(' ', "6B", "Иванова,,")),
            frames::toHost(frames::answer(' ', "6B"))});
    const Emulator emulator;
    const QStringList replay{"trace", "replay", opening, "--as", "host", emulator.port()};
    const Result locked = runFrctl(replay + QStringList{"--password", "ABCD"});
    EXPECT_EQ(locked.status, 1);
    EXPECT_TRUE(locked.errors.contains("06") && locked.errors.contains("--password"))
        << locked.errors.constData();
    EXPECT_TRUE(runFrctl(replay).errors.contains("frctl status")) << "it was just switched on";
    EXPECT_EQ(runFrctl({"--port", emulator.port(), "--protocol", "HEX", "status"}).status, 0);
    const Result played = runFrctl(replay);
    EXPECT_EQ(played.status, 0) << played.output.constData();
    EXPECT_FALSE(played.errors.contains("frctl status")) << played.errors.constData();
}

/// The trace as of a register whose drive is none for tests.
QString fiscalTrace(const QTemporaryDir& folder, const QString& name)
{
    QList<trace::Frame> frames = trace::readTrace(readAll(name)).frames;
    for (trace::Frame& frame : frames) {
        const QByteArray bytes = QByteArray(frame.bytes).replace("9999000000000001", "7281000000000001");
        frame.bytes = bytes.startsWith('\x02') ? trace::hexframe::withCheckOf(bytes, frame.bytes) : bytes;
    }
    return traceFile(folder, frames);
}

// A replay makes documents once more, past all that keeps sell from it.
TEST(Trace, ReplayGoesToTheTestRegisterThatIsMeant)
{
    for (const QString protocol : {"hex", "xml"}) {
        SCOPED_TRACE(protocol.toStdString());
        const QString trace = QStringLiteral(FRSPF_SOURCES "/tests/traces/%1-day.trace").arg(protocol);
        const QStringList replay{"trace", "replay", trace, "--as", "host", "--port"};
        QTemporaryDir folder;
        PlayedRegister fiscal(fiscalTrace(folder, trace));
        const Result refused = runFrctl(replay + QStringList{fiscal.port()});
        EXPECT_EQ(refused.status, 1);
        EXPECT_TRUE(refused.errors.contains("7281000000000001")) << refused.errors.constData();
        const Emulator test({"--drive", "9999000000000001"});
        const std::tuple<QStringList, int, const char*> rows[] = {
            {{"--expect-serial", "17"}, 1, "17"},
            {{"--expect-serial", "17", "--force"}, 1, "17"},
            {{"--protocol", protocol == "hex" ? "XML" : "HEX"}, 2, "protocol"},
        };
        for (const auto& [options, status, told] : rows) {
            const Result result = runFrctl(replay + QStringList{test.port()} + options);
            EXPECT_EQ(result.status, status) << options.join(' ').toStdString();
            EXPECT_TRUE(result.errors.contains(told)) << result.errors.constData();
        }
        EXPECT_TRUE(test.journal().isEmpty());
        const Result forced = runFrctl(replay + QStringList{fiscal.port(), "--force"});
        EXPECT_EQ(fiscal.finish().status, 0) << "nothing had been asked that is no question";
        EXPECT_TRUE(forced.errors.contains("journal accept")) << forced.errors.constData();
        const QStringList meant{"--expect-serial", "00103000000012345678"};
        runFrctl(replay + QStringList{test.port()} + meant);
        EXPECT_FALSE(test.sales().isEmpty());
    }
}

TEST(Trace, FileThatTakesNothing)
{
    Emulator emulator;
    const QStringList selling{
        "--port", emulator.port(), "--protocol", "HEX", "sell", FRSPF_EXAMPLES "/sale.json", "--trace"};
    for (const char* const file : {"/no/such/folder/trace", FRSPF_EXAMPLES "/sale.json", ""})
        EXPECT_EQ(runFrctl(selling + QStringList{file}).status, 2) << file;
    QTemporaryDir folder;
    const QString masked = folder.filePath("masked");
    runFrctl({"--port", emulator.port(), "--protocol", "HEX", "status", "--trace", masked});
    EXPECT_EQ(runFrctl(selling + QStringList{masked, "--trace-full"}).status, 2);
    EXPECT_EQ(emulator.sales().size(), 0);
    const QStringList named = selling + QStringList{"/dev/full", "--json", "--id", "traced-sale"};
    const Result full = runFrctl(named);
    EXPECT_EQ(full.status, 0);
    EXPECT_EQ(full.errors.count("/dev/full"), 1) << full.errors.constData();
    EXPECT_TRUE(full.output.contains("/dev/full"));
    for (const char* const line : {"names fields --trace x", "detect --trace x", "doctor --trace x",
             "trace replay " FRSPF_SOURCES "/tests/traces/hex-day.trace --as register tcp:nowhere"})
        EXPECT_EQ(runFrctl(QString(line).split(' ')).status, 2) << line;
    // One that is done already works no register, and there is nothing to trace.
    EXPECT_EQ(runFrctl(named).status, 0);
    EXPECT_EQ(emulator.sales().size(), 1);
}

} // namespace
