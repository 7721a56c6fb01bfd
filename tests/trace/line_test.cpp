#include "frames.h"
#include "trace/recorder.h"
#include "trace/tracefile.h"
#include "trace/traceline.h"
#include "trace/tracereader.h"

#include <gtest/gtest.h>
#include <QTemporaryDir>

namespace {

using namespace frames;
using trace::Direction;

const QByteArray head = "# frtrace 1 masked\n";
const QByteArray line = "2026-03-01T14:05:09.123456+03:00 2 < 06 HEX ACK\n";

// Lines that something else begins with are for the next reader to see, and what is not a trace is refused.
TEST(Lines, ReaderIsStrict)
{
    const std::pair<QByteArray, const char*> rows[] = {
        {"", "line 1"},
        {line, "line 1"},
        {"# frtrace 2 masked\n" + line, "line 1"},
        {head + "\n" + line, "line 2"},
        {head + line + "spf-emulator: ready on x\n" + line, "line 3"},
        {head + "2026-03-01T14:05:09.123456+03:00 2 ? 06 HEX ACK\n" + line, "line 2"},
        {head + "2026-03-01T14:05:09.123456+03:00 0 < 06 HEX ACK\n" + line, "line 2"},
        {head + "2026-03-01T14:05:09.123456+03:00 2 < 0 HEX ACK\n" + line, "line 2: has half a byte"},
        {head + "2026-13-01T14:05:09.123456+03:00 2 < 06 HEX ACK\n" + line, "line 2: has no time"},
        {head + "2026-03-01T14:05:09.123456 2 < 06 HEX ACK\n" + line, "line 2"},
    };
    for (const auto& [text, expected] : rows) {
        SCOPED_TRACE(text.constData());
        try {
            trace::readTrace(text);
            ADD_FAILURE() << "was read";
        } catch (const trace::TraceError& error) {
            EXPECT_EQ(std::string(error.what()).rfind(expected, 0), 0U) << error.what();
        }
    }
}

TEST(Lines, BrokenOffLastLineIsLeftOut)
{
    for (qsizetype size = 1; size < line.size(); ++size) {
        const trace::Trace trace = trace::readTrace(head + line + line.left(size));
        EXPECT_TRUE(trace.isCut) << size;
        // Once its meaning has begun, all of its bytes are there.
        const bool isWhole = size > line.indexOf(" HEX");
        EXPECT_EQ(trace.frames.size(), isWhole ? 2 : 1) << size;
    }
    EXPECT_FALSE(trace::readTrace(head + line).isCut);
}

TEST(Lines, ProgramsAddToATrace)
{
    QTemporaryDir folder;
    const QString name = folder.filePath("trace");
    const auto add = [&name](const QByteArray& text) {
        trace::TraceFile file;
        ASSERT_EQ(file.open(name, true), QString());
        file.append(text);
    };
    add(head + line + "2026-03-01T14:05");
    EXPECT_NE(trace::TraceFile().open(name, false), QString()) << "names behind a head that says masked";
    add(head + "# frctl\n" + line);
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const trace::Trace trace = trace::readTrace(file.readAll());
    ASSERT_EQ(trace.frames.size(), 2);
    EXPECT_EQ(trace.frames.at(0).connection, 2);
    EXPECT_EQ(trace.frames.at(1).connection, 4);
    EXPECT_EQ(trace.frames.at(0).microseconds, 1772363109123456);
    EXPECT_TRUE(trace.isMasked && trace.isCut && !trace.isMixed);
    const trace::Trace mixed = trace::readTrace(head + line + "# frtrace 1 full\n" + line + head + line);
    EXPECT_TRUE(mixed.isMixed && !mixed.isMasked);
    ASSERT_EQ(trace.notes.size(), 1);
    EXPECT_EQ(trace.notes.at(0).position, 1);
    // A receipt that was named by mistake is not spoilt.
    QFile other(folder.filePath("receipt.json"));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly) && other.write("{}") == 2);
    other.close();
    EXPECT_NE(trace::TraceFile().open(other.fileName(), true), QString());
}

TEST(Lines, FullDiskIsToldOnce)
{
    trace::TraceFile file;
    int told = 0;
    ASSERT_EQ(file.open("/dev/full", true), QString());
    file.setLossListener([&told](const QString&) { ++told; });
    file.append(line);
    file.append(line);
    EXPECT_EQ(told, 1);
}

// What goes over a line and how it is cut: however it comes in pieces, each frame is one line.
TEST(Lines, FramesAreAssembled)
{
    const QByteArray bitmap("\u001BBM\x02\x03\x1B", 6);
    const std::pair<Direction, QList<QByteArray>> rows[] = {
        {Direction::ToHost, {answer(' ', "A0").insert(7, '\x06').insert(9, '\x06'), answer('!', "A0")}},
        {Direction::ToRegister, {request(' ', "A0"), "\x05", request('!', "30", "Хлеб,,1.000,")}},
        {Direction::ToRegister, {request(' ', "E2", "5,"), bitmap, bitmap, request('!', "A0")}},
        {Direction::ToRegister, {"\x02QZXW A1", request('!', "A0")}},
        {Direction::ToHost,
            {"\x06", "\x06", "noise\x1B", answer(' ', "A0", "0,4,0,"), answer(' ', "A1", "a\u0002b,")}},
        {Direction::ToHost, {"<<x<", answer(' ', "A0")}},
        {Direction::ToRegister, {xmlRequest("a", 58), xmlRequest("b", 2)}},
        {Direction::ToHost, {"\r\n", xmlAnswer("a", 58) + "\r\n", xmlAnswer("b", 2)}},
    };
    const auto shown = [](QList<QByteArray> frames) {
        // Blanks behind a document belong to it when they come with it.
        for (QByteArray& frame : frames)
            frame = frame.startsWith('<') || frame.trimmed().isEmpty() ? frame.trimmed() : frame;
        frames.removeAll(QByteArray());
        return frames.join('|').toHex(' ').toStdString();
    };
    for (const auto& [direction, sent] : rows) {
        const QByteArray stream = sent.join();
        for (const qsizetype size : {qsizetype{1}, qsizetype{7}, stream.size()}) {
            trace::Framer framer(direction);
            QList<QByteArray> frames;
            for (qsizetype at = 0; at < stream.size(); at += size)
                frames += framer.feed(stream.mid(at, size));
            EXPECT_EQ(framer.takeRest().trimmed(), QByteArray());
            EXPECT_EQ(shown(frames), shown(sent)) << size;
        }
    }
}

TEST(Lines, RecorderWritesWhatReadersRead)
{
    QByteArray text;
    qint64 now = 1772363109123456;
    trace::Recorder recorder(
        [&text](const QByteArray& written) { text += written; }, false, [&now] { return now += 1500; });
    recorder.begin("a program");
    recorder.connected();
    const QByteArray asked = request(' ', "A0");
    recorder.passed(Direction::ToRegister, asked.left(5));
    recorder.passed(Direction::ToRegister, asked.mid(5));
    recorder.passed(Direction::ToHost, "\x02 A0");
    // Whoever asks again has given up waiting for the rest.
    recorder.passed(Direction::ToRegister, "\x05");
    recorder.passed(Direction::ToHost, answer(' ', "A0", "0,4,0,"));
    recorder.connected();
    recorder.passed(Direction::ToRegister, "\x02QZ");
    recorder.flush();
    const trace::Trace trace = trace::readTrace(text);
    QByteArrayList bytes;
    for (const trace::Frame& frame : trace.frames)
        bytes.append(frame.bytes);
    EXPECT_EQ(bytes.join('|').toHex(' '),
        (QByteArrayList{asked, "\x02 A0", "\x05", answer(' ', "A0", "0,4,0,"), "\x02QZ"})
            .join('|')
            .toHex(' '));
    EXPECT_EQ(trace.frames.constFirst().microseconds, 1772363109123456 + 1500);
    EXPECT_EQ(trace.frames.constLast().connection, 2);
    EXPECT_TRUE(text.contains(" ok id=20 fatal=0 flags=4 document=0 4.500 ms\n"));
    EXPECT_TRUE(text.contains("HEX RequestStateStatus(A0) BAD: broken off"));
}

} // namespace
