#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QDomDocument>
#include <QString>

#include <optional>

/// The documents of the XML protocol: pure functions between fields and bytes, without a port.
namespace spfxml::envelope {

/// What goes into a request.
struct Request
{
    QString protocolVersion;
    QByteArray id;
    QDateTime time;
    int command = 0;
    /// A document of its own, written as a text; empty for a command without parameters.
    QString data;
};

/// A whole ArmRequest document. Half a character, as a text cut at its end may have, becomes a question mark.
QByteArray build(const Request& request);

/// Whether the bytes hold the end of an answer and the id. No more is known of an answer that is on its way:
/// the wire has no framing.
bool isWhole(const QByteArray& answer, const QByteArray& requestId);

/// Why a text is no document.
struct Flaw
{
    int line = 0;
    int column = 0;
    QString reason;
};

/// The document of a text; none when it is not well formed, or so deep that the driver's stack would not do.
std::optional<QDomDocument> parse(const QByteArray& text, Flaw* flaw = nullptr);
std::optional<QDomDocument> parse(const QString& text);

/// What an answer says of its command. The error is told by a failed command only.
struct Verdict
{
    bool isSuccess = false;
    int errorCategory = 0;
    int errorCode = 0;
    QString errorDescription;
};

/// A field of an answer that is missing or cannot be read.
struct BadField
{
    QString tag;
    QString text;
};

/// The verdict of an answer, or none and the first field that hinders it. Fields are found by their tags,
/// wherever they stand.
std::optional<Verdict> verdict(const QDomDocument& answer, BadField* badField);

/// The text inside an answer: a document of its own, empty when there is none.
QString data(const QDomDocument& answer);

} // namespace spfxml::envelope
