#pragma once

#include "xml/answer.h"

namespace emulator {

/// A request as it came out of its envelope.
struct XmlRequest
{
    QString id;
    int command = 0;
    /// Nothing for a command without parameters.
    std::optional<XmlNode> data;
};

/// The documents around the parameters: "ArmRequest" in, "ArmResponse" out.
namespace xmlenvelope {

/// The end of a request; a line has no other frame.
inline const QByteArray requestEnd = QByteArrayLiteral("</ArmRequest>");

/// Where the first request in the bytes ends, negative when there is no end yet. One in UTF-16 has one, too.
qsizetype endOfRequest(const QByteArray& bytes, qsizetype from);

/// The elements of RequestBody in their order.
const QStringList& bodyNames();

/// Fills in what can be read, so that a refusal can still carry the id.
XmlVerdict read(const QByteArray& document, XmlRequest& request);
QByteArray answer(const QString& id, int command, const QDateTime& time, const XmlAnswer& answer);

} // namespace xmlenvelope

} // namespace emulator
