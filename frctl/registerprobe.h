#pragma once

#include "connectionsettings.h"
#include "lineerrors.h"

#include <QString>

#include <optional>

class AbstractFrDriver;

namespace frctl {

class LineTrace;
struct Options;

/// A register answers the first question within a second or two; a driver would ask for a minute and more.
constexpr int probeMs = 4000;

/// What a register tells of itself when it is connected to.
struct FoundRegister
{
    QString model;
    QString serial;
    QString firmware;
    /// Empty over XML, whose driver does not tell it.
    QString inn;
};

/// What came of asking a port over one protocol.
struct Probe
{
    QString port;
    /// "HEX" or "XML".
    QString protocol;
    /// False for a port that is busy, or cannot be opened.
    bool isAsked = false;
    /// Not asked, and there: another program works it, or this user may not open it.
    bool isKept = false;
    /// The other end has closed it, or it was unplugged.
    bool isLineGone = false;
    /// Nothing when no register answered.
    std::optional<FoundRegister> found = {};
    /// The driver's or the system's words then.
    QString failure = {};
    qint64 receivedBytes = 0;
    /// All that came were the signs of a register that works on something, which answers when it is done.
    bool isAtWork = false;
    /// Nothing where the system does not count.
    std::optional<devices::LineErrors> lineErrors = {};
};

/// Connects to the register of that port, which asks who it is and changes nothing: a document that somebody
/// has open stays so. It lasts for some seconds at most. What goes over the line stands in the trace, which
/// may be null. Throws Interrupted, and devices::ConnectionError without a plugin.
Probe probe(const Options& options, const QString& port, const QString& protocol, LineTrace* trace);
/// For a question to the register of that port, which must not last.
devices::ConnectionSettings probeSettings(
    const Options& options, const QString& port, const QString& protocol);
/// Asks who the register is, which changes nothing. Throws what the driver throws.
FoundRegister identify(AbstractFrDriver& driver, const QString& protocol);
/// What a probe without an answer is likely to mean, and what to look at.
QString likelyCause(const Probe& probe);

} // namespace frctl
