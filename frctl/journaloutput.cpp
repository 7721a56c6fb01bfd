#include "journaloutput.h"

#include "documentstate.h"
#include "frctltr.h"

namespace frctl {

namespace {

QString shownTime(const QDateTime& time)
{
    return time.isValid() ? time.toLocalTime().toString(Qt::ISODate) : QStringLiteral("-");
}

QString stateText(const sale::StoredDocument& document)
{
    const QString reason = sale::reasonName(document.reason);
    return sale::stateName(document.state) + (reason.isEmpty() ? QString() : QStringLiteral(", ") + reason);
}

QString attemptLine(const sale::StoredAttempt& attempt)
{
    const QString state = attempt.verdict ? sale::stateName(*attempt.verdict) : tr("not settled");
    const QString failure = attempt.note.failure.value(QStringLiteral("text")).toString();
    const QString line
        = tr("attempt %1: %2, %3").arg(QString::number(attempt.number), shownTime(attempt.begun), state);
    return failure.isEmpty() ? line : line + QStringLiteral(": ") + failure;
}

} // namespace

QString storedLine(const sale::StoredDocument& document)
{
    QString line = QStringLiteral("%1  %2  %3  %4")
                       .arg(shownTime(document.accepted), document.request.id, document.request.kind,
                           stateText(document));
    if (document.documentNumber != 0)
        line += tr("  document %1").arg(document.documentNumber);
    return document.drive.isEmpty() ? line : line + tr("  drive ") + document.drive;
}

QStringList storedLines(const sale::StoredDocument& document)
{
    QStringList lines{storedLine(document)};
    for (const sale::StoredAttempt& attempt : document.attempts)
        lines.append(attemptLine(attempt));
    if (!document.resolvedBy.isEmpty())
        lines.append(tr("resolved by %1: %2").arg(document.resolvedBy, document.resolvedNote));
    if (!document.request.body.isEmpty())
        lines.append(QString::fromUtf8(document.request.body).trimmed());
    return lines;
}

} // namespace frctl
