#include "tracereplay.h"

#include "errors.h"
#include "frctltr.h"
#include "interruption.h"
#include "messages.h"
#include "servedport.h"
#include "trace/registerplayer.h"

#include <QJsonArray>
#include <QThread>

#include <algorithm>
#include <memory>

namespace frctl {

namespace {

constexpr int sliceMs = 50;
// Microseconds between two answers to one request.
constexpr qint64 longestPause = 2'000'000;

void addList(Output& output, const char* name, const QStringList& lines)
{
    output.json.insert(QLatin1String(name), QJsonArray::fromStringList(lines));
    if (!lines.isEmpty())
        output.status = ExitFailure;
}

/// Whoever works on the host wants to know while it is at it.
void complainAbout(const QStringList& refused, qsizetype told)
{
    for (const QString& line : refused.mid(told))
        complain(tr("refused: ") + line);
}

void answer(trace::RegisterPlayer& player, ServedPort& port)
{
    const qsizetype told = player.complaints().size();
    const QList<trace::RegisterPlayer::Answer> answers = player.receive(port.read(sliceMs));
    complainAbout(player.complaints(), told);
    for (const trace::RegisterPlayer::Answer& answer : answers) {
        QThread::usleep(
            static_cast<unsigned long>(std::clamp<qint64>(answer.pauseMicroseconds, 0, longestPause)));
        port.write(answer.bytes);
    }
}

Output registerReport(const trace::RegisterPlayer& player)
{
    const QStringList missing = player.isDone() ? QStringList() : player.missing();
    Output output;
    output.lines.append(tr("%1 requests answered").arg(player.playedCount()));
    if (!player.complaints().isEmpty())
        output.lines.append(tr("%1 requests refused").arg(player.complaints().size()));
    for (const QString& line : missing)
        output.lines.append(tr("did not come: ") + line);
    output.json = {{QStringLiteral("played"), player.playedCount()}};
    addList(output, "refused", player.complaints());
    addList(output, "missing", missing);
    return output;
}

} // namespace

Output playRegister(const trace::Trace& trace, const QString& name)
{
    const std::unique_ptr<ServedPort> port = servePort(name);
    trace::RegisterPlayer player(trace);
    catchInterruptions();
    complain(tr("ready on ") + name);
    while (!wasInterrupted() && !(player.isDone() && port->isLeft()))
        answer(player, *port);
    return registerReport(player);
}

} // namespace frctl
