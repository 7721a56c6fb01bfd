#pragma once

#include "expectedregister.h"
#include "protocol.h"

#include <QString>
#include <QtGlobal>

#include <functional>
#include <utility>

namespace sale {

/// What the host knows of its register and of the line to it, and the contract does not tell.
struct RegisterLine
{
    // Not explicit: for most hosts the protocol says it all.
    RegisterLine(receipt::Protocol registerProtocol = receipt::Protocol::Xml, bool exclusive = false,
        std::function<quint64()> soleConnection = {})
        : protocol(registerProtocol)
        , isExclusive(exclusive)
        , connection(std::move(soleConnection))
    {
    }

    /// HEX answers have a check value, XML answers have none.
    bool isChecked() const { return protocol == receipt::Protocol::Hex; }
    quint64 repeatsNow() const { return repeats ? repeats() : 0; }
    quint64 connectionNow() const { return connection ? connection() : 0; }
    QString driveNow() const { return drive ? drive() : QString(); }

    /// Decides what can be asked of the register, and how often the driver sends a request.
    receipt::Protocol protocol;
    /// Nobody works this register but programs that share one lock with this one. Declared by whoever set it
    /// up: then a document between two marks is ours also over a connection that broke.
    bool isExclusive;
    /// A number for the open connection, another one for each that is opened, while no other program can open
    /// the line; 0 when one can. May be empty. devices::StreamDevice::soleConnection tells it.
    std::function<quint64()> connection;
    /// How often the driver has sent a request again so far, since no answer came. May be empty.
    /// devices::StreamDevice::repeats tells it.
    std::function<quint64()> repeats = {};
    /// Compared at each connection, before anything else is asked or sent.
    ExpectedRegister expected;
    /// The fiscal drive that the host means to sell on: a register may be switched off, get another one and
    /// be switched on again without a break of the line. May be empty, or tell nothing: then any is meant.
    std::function<QString()> drive = {};
    /// The journal is to have what the register's clock said behind each document. Asked over HEX alone.
    bool isClockRead = false;
};

} // namespace sale
