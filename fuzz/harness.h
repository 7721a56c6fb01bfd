#pragma once

#include "memorydevice.h"

#include <driverlogtoqt.h>
#include <QHashSeed>
#include <QList>
#include <QLoggingCategory>
#include <QtGlobal>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <utility>

/// What the fuzz targets share. Each of them is one function that libFuzzer calls with bytes of its choice;
/// in other builds the program replay calls it with the files of the corpus.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size);

namespace fuzz {

/// A finding: libFuzzer keeps the input of a program that aborts, and a replayed test fails.
inline void require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "fuzz: %s\n", what);
    std::abort();
}

inline void discard(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    // Assertions of Qt end here; it aborts by itself.
    if (type == QtFatalMsg)
        std::fprintf(stderr, "fuzz: %s\n", message.toUtf8().constData());
}

/// To be called first. All lines of the log are built, as they may be at fault too, and thrown away.
inline void prepare()
{
    static const bool done = [] {
        QHashSeed::setDeterministicGlobalSeed();
        QLoggingCategory::setFilterRules(QStringLiteral("*.trace=true"));
        driverLogToQt();
        qInstallMessageHandler(&discard);
        return true;
    }();
    static_cast<void>(done);
}

/// The bytes of an input: choices from its front, then the rest.
class Input
{
public:
    Input(const unsigned char* data, size_t size)
        : m_bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))
    {
    }

    /// 0 when the input is used up.
    unsigned take()
    {
        const unsigned value = m_bytes.isEmpty() ? 0 : static_cast<unsigned char>(m_bytes.at(0));
        m_bytes.remove(0, 1);
        return value;
    }
    const QByteArray& rest() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// A line whose far end answers each write by that function. What is missing is silence, or a fault of the
/// port; nobody waits for either.
class Line : public devices::MemoryDevice
{
public:
    using Answer = std::function<QByteArray(const QByteArray& request)>;

    explicit Line(Answer answer)
        : m_answer(std::move(answer))
    {
    }

    /// The longest piece that is read at once.
    qint64 portion = 200;
    /// Where the answers end, the port says that there are bytes and gives none.
    bool isBroken = false;

    QString getDeviceName() const override { return QStringLiteral("fuzz"); }
    bool isOpen() const override { return true; }
    bool open() override { return true; }
    void close() override { clear(); }
    int getType() const override { return Com; }
    bool clear() override
    {
        m_input.clear();
        m_read = 0;
        return true;
    }
    qint64 write(const QByteArray& data) override
    {
        m_input = m_input.mid(m_read) + m_answer(data);
        m_read = 0;
        return data.size();
    }
    QByteArray read(qint64 maxSize) override
    {
        const QByteArray bytes = m_input.mid(m_read, qMin(maxSize, portion));
        m_read += bytes.size();
        return bytes;
    }
    bool waitForReadyRead(int) override { return isBroken || m_read < m_input.size(); }

private:
    const Answer m_answer;
    QByteArray m_input;
    qsizetype m_read = 0;
};

} // namespace fuzz
