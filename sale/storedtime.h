#pragma once

#include <QDateTime>
#include <QString>

namespace sale {

/// The form in which the journal keeps times: UTC with milliseconds, so that texts sort as the times do.
/// Null for an invalid one.
QString storedTime(const QDateTime& time);
QDateTime timeFromStored(const QString& text);
/// By how much a clock may be put back before nobody knows any more how long a document has waited.
constexpr int mostSecondsBack = 60;
/// The host's clock.
QString storedNow();

} // namespace sale
