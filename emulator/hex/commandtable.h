#pragma once

#include "hex/answer.h"
#include "hex/fields.h"
#include "line/exchange.h"

namespace emulator {

class Register;

/// One command of the HEX protocol.
struct HexCommand
{
    int code;
    const char* name;
    HexAnswer (*handler)(Register& device, HexFields& fields);
    /// What stands in its fields, with commas between them: "?" for what the command reads, else the only
    /// bytes that may be there. Null for a command without fields.
    const char* form;
    /// How many of the last fields a host may leave out.
    int optional;
    /// The register must have been started.
    bool started;
    ExchangeRole role = ExchangeRole::Other;
    /// The first fields with which it has its role, with commas between them; null for any.
    const char* questions = nullptr;

    /// Nothing for a code that no command has.
    static const HexCommand* find(int code);
    ExchangeRole roleWith(const QByteArray& field) const;
    /// Why the fields are not those of the command, empty when they are. Only a strict register looks at more
    /// than whether they are enough.
    QString misfit(const HexFields& fields) const;
};

} // namespace emulator
