#include "program/station.h"

#include "conformance/hostreport.h"
#include "memory/memoryerror.h"
#include "program/ptyline.h"
#include "program/statesnapshots.h"
#include "program/tcpline.h"
#include "register/drivenumber.h"
#include "tape/pagetext.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonDocument>

#include <cstdio>
#include <utility>

namespace {

// What is no file has no end to go to, and Qt complains when it is told to.
QIODevice::OpenMode writing(const QString& name)
{
    const QFileInfo there(name);
    const QIODevice::OpenMode mode = QIODevice::WriteOnly | QIODevice::Text;
    return there.exists() && !there.isFile() ? mode : mode | QIODevice::Append;
}

// Over HEX a reason ends with the fields that are bad, which may tell of people. The frame before the note
// has them, masked as far as they do.
QString withoutValues(const emulator::RefusedRequest& refused)
{
    const bool isXml = refused.request.contains("<ArmRequest");
    return isXml ? refused.reason : refused.reason.left(refused.reason.indexOf(QStringLiteral(": \"")));
}

} // namespace

Station::Station(const Options& options, std::unique_ptr<emulator::Memory> memory,
    emulator::panel::Panel* panel, QObject* parent)
    : QObject(parent)
    , m_options(options)
    , m_memory(std::move(memory))
    , m_clock(options.clockAhead)
    , m_register(m_clock, options.identity)
    , m_outbox(m_clock, options.baudRate)
    , m_protocol(m_register, m_outbox, m_clock, options.protocol)
    , m_watch(m_register)
    , m_tape(options.tapeFile)
    , m_journal(options.journalFile)
    , m_report(options.conformanceFile)
{
    connectProtocol();
    if (panel != nullptr)
        sitDown(*panel);
    power::switchOn(m_register, m_memory.get(), options);
    if (m_desk != nullptr)
        m_desk->begin();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] { pump(); });
}

void Station::connectProtocol()
{
    m_faults.setMagic(m_options.magic);
    m_protocol.setFaultSource(&m_faults);
    m_faults.setPlan(m_options.faults);
    m_protocol.setMisfitListener([](const QString& words) {
        std::fprintf(stderr, "spf-emulator: %s and does not happen\n", qPrintable(words));
    });
    m_protocol.setLenient(m_options.lenient);
    m_register.refusals().setListener([this](const emulator::RefusedRequest& refused) {
        const QString words = QStringLiteral("refused: ");
        std::fprintf(stderr, "%s\n", (words + refused.reason.simplified()).toUtf8().constData());
        if (m_trace && m_options.traceFile != QStringLiteral("-"))
            m_trace->note(words + (m_options.isTraceFull ? refused.reason : withoutValues(refused)));
    });
    m_protocol.setWatcher([this](const emulator::Exchange& exchange) {
        if (isWatching() || m_desk != nullptr)
            m_watch.note(exchange);
        if (m_desk != nullptr)
            m_desk->noted(exchange);
    });
}

void Station::sitDown(emulator::panel::Panel& panel)
{
    m_desk = &panel.add(m_register, m_watch, m_faults);
    m_desk->setHands(hands());
    if (m_memory)
        m_desk->setSnapshots(std::make_unique<StateSnapshots>(m_memory, m_register, m_options.clockAhead));
}

emulator::panel::Hands Station::hands()
{
    emulator::panel::Hands hands;
    hands.keep = [this] { return keep(); };
    hands.dropLine = [this] {
        m_outbox.clear();
        m_protocol.forget();
        m_line->settle();
    };
    if (m_memory)
        hands.documents
            = [this] { return m_memory ? m_memory->documents() : QList<emulator::StoredDocument>(); };
    // Tests that compare know the numbers of all drives, whatever the other registers do.
    if (m_options.isGiven("drive"))
        hands.nextDrive = [this, first = m_options.identity.driveNumber] {
            return emulator::drivenumber::countedOn(first, ++m_drives * m_options.registers)
                .value_or(emulator::drivenumber::fresh());
        };
    return hands;
}

QString Station::open()
{
    // The report is of this run alone.
    if (isWatching())
        QFile::resize(m_report.fileName(), 0);
    for (QFile* const file : {&m_tape, &m_journal, &m_report}) {
        if (!file->fileName().isEmpty() && !file->open(writing(file->fileName())))
            return QStringLiteral("cannot write %1: %2").arg(file->fileName(), file->errorString());
    }
    if (!m_options.quiet)
        m_terminal.open(stdout, QIODevice::WriteOnly);
    if (const QString error = openTrace(); !error.isEmpty())
        return QStringLiteral("--trace: %1: %2").arg(m_options.traceFile, error);
    connectPaper();
    const QString error = openLine();
    if (!error.isEmpty())
        return error;
    if (m_desk != nullptr)
        m_desk->setLine(address(), m_options.port ? nameOf(m_options.connections) : QString());
    connect(m_line, &Line::received, this, [this](const QByteArray& bytes) { receive(bytes); });
    connect(m_line, &Line::connected, this, [this] {
        if (m_trace)
            m_trace->connected();
    });
    connect(m_line, &Line::changed, this, [this] { m_protocol.forget(); });
    return {};
}

QString Station::openLine()
{
    if (m_options.port) {
        auto* const line = new TcpLine(*m_options.port, m_options.connections, this);
        m_line = line;
        return line->error();
    }
    auto* const line = new PtyLine(m_options.link, this);
    m_line = line;
    return line->error();
}

void Station::connectPaper()
{
    m_register.tape().setListener([this](const tape::Page& page, quint32 document) {
        const QByteArray text = tape::toText(page).join(QLatin1Char('\n')).toUtf8() + '\n';
        m_output.append({&m_tape, text});
        m_output.append({&m_terminal, text});
        if (m_desk != nullptr)
            m_desk->printed(page, document);
    });
    m_register.journal().setListener([this](const QJsonObject& entry) {
        m_watch.store(entry);
        if (m_desk != nullptr)
            m_desk->stored(entry);
        m_output.append({&m_journal, QJsonDocument(entry).toJson(QJsonDocument::Compact) + '\n'});
    });
}

void Station::append(QFile& file, const QByteArray& text)
{
    if (!file.isOpen() || (file.write(text) == text.size() && file.flush()))
        return;
    const QString name = file.fileName().isEmpty() ? QStringLiteral("the terminal") : file.fileName();
    std::fprintf(stderr, "spf-emulator: cannot write %s any more: %s\n", qPrintable(name),
        qPrintable(file.errorString()));
    m_hasLostOutput = true;
    file.close();
}

int Station::finish()
{
    if (m_trace)
        m_trace->flush();
    if (isWatching()) {
        const emulator::HostRecord& record = m_watch.record();
        append(m_report, QJsonDocument(emulator::hostreport::toJson(record)).toJson());
        std::fputs(emulator::hostreport::toText(record).toUtf8().constData(), stderr);
    }
    const bool isGood = !m_hasLostOutput && !m_hasLostPower;
    return isGood && (!isWatching() || m_watch.record().refused == 0) ? 0 : 1;
}

void Station::showOutput()
{
    for (const Output& output : std::exchange(m_output, {}))
        append(*output.file, output.text);
}

void Station::togglePaper()
{
    if (m_hasLostPower)
        return;
    m_register.setPaper(!m_register.hasPaper());
    if (!keep())
        return;
    std::fprintf(stderr, "spf-emulator: paper is %s\n", m_register.hasPaper() ? "in" : "out");
}

void Station::receive(const QByteArray& bytes)
{
    trace(trace::Direction::ToRegister, bytes);
    if (m_register.isPowered())
        work(bytes);
    if (!m_outbox.nextDue())
        m_line->settle();
}

void Station::work(const QByteArray& bytes)
{
    // In pieces: pages are kept for so many documents only until they are on the disk, and a request that
    // makes one may be as short as 12 bytes.
    constexpr qsizetype piece = 3000;
    for (qsizetype start = 0; start < bytes.size() && !m_hasLostPower; start += piece) {
        m_protocol.receive(bytes.mid(start, piece));
        if (keep())
            pump();
    }
}

bool Station::keep()
{
    if (m_hasLostPower)
        return false;
    try {
        if (m_memory)
            m_memory->save(m_register);
        else if (!m_options.stateFolder.isEmpty())
            throw emulator::MemoryError(QStringLiteral("it could not be opened again"));
        showOutput();
        if (m_desk != nullptr)
            m_desk->settle();
    } catch (const emulator::MemoryError& error) {
        losePower(error.text());
    }
    return !m_hasLostPower;
}

void Station::losePower(const QString& why)
{
    const QString which = m_options.registers > 1 ? QStringLiteral(" of %1").arg(address()) : QString();
    std::fprintf(stderr, "spf-emulator: the state%s cannot be kept, as if the power were gone: %s\n",
        qPrintable(which), qPrintable(why));
    m_hasLostPower = true;
    m_outbox.clear();
    m_protocol.forget();
    m_output.clear();
    // It is shown as it was kept last, as a start of the program finds it.
    try {
        if (m_memory)
            m_memory->load(m_register, m_options.clockAhead);
    } catch (const emulator::MemoryError&) {
        m_memory.reset();
    }
    m_register.setPowered(false);
    if (m_desk != nullptr)
        m_desk->stop(why);
    Q_EMIT lostPower();
}

void Station::pump()
{
    const QByteArray bytes = m_outbox.take();
    if (!bytes.isEmpty()) {
        trace(trace::Direction::ToHost, bytes);
        m_line->write(bytes);
    }
    if (const std::optional<qint64> due = m_outbox.nextDue())
        m_timer.start(static_cast<int>(qMax<qint64>(1, *due - m_clock.milliseconds())));
    else
        m_line->settle();
}

QString Station::openTrace()
{
    if (m_options.traceFile.isEmpty())
        return {};
    if (const QString error = m_traceFile.open(m_options.traceFile, !m_options.isTraceFull); !error.isEmpty())
        return error;
    m_traceFile.setLossListener([this](const QString& reason) {
        std::fprintf(stderr, "spf-emulator: cannot write %s any more: %s\n", qPrintable(m_options.traceFile),
            qPrintable(reason));
        m_hasLostOutput = true;
    });
    m_trace.emplace([this](const QByteArray& line) { m_traceFile.append(line); }, !m_options.isTraceFull);
    m_trace->begin(
        QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion());
    return {};
}

void Station::trace(trace::Direction direction, const QByteArray& bytes)
{
    if (m_trace)
        m_trace->passed(direction, bytes);
    if (m_desk != nullptr && m_register.isPowered())
        m_desk->passed(direction, bytes);
}
