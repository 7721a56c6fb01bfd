#pragma once

#include <QByteArray>
#include <QStringList>

// What bench/frserver.py has measured here, where an interpreter would be too slow. Each prints one line of
// JSON, or says what failed by std::exception.

/// Sells directly on one register and through the service on another, in turns: PLUGIN, PORT, PROTOCOL,
/// JOURNAL of the direct one, HTTP-PORT, REGISTER, COUNT. Tells milliseconds, {"direct": [...], "service":
/// [...]}.
void compare(const QStringList& arguments, const QByteArray& receipt);
/// Sells through the service, one sale after the other at each register: HTTP-PORT, SECONDS, REGISTER ...
/// Tells
/// {"sales": n, "seconds": s} of the time in which all were at it.
void load(const QStringList& arguments);
/// Serial lines to the software register: BAUD, PORT ... of 127.0.0.1. Tells the ports to be opened instead,
/// in their order, and carries until its input ends.
void relay(const QStringList& arguments);

/// A sale of so many positions.
QByteArray receiptOf(int positions);
/// Another one for each sale of each run.
QByteArray newSaleId();
