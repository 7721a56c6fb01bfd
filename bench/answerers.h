#pragma once

#include "register/identity.h"

#include <QByteArray>
#include <QList>

#include <functional>

enum class Language { Hex, Xml };

/// What a register does with the bytes that it has got so far: its answer, or nothing while the request is
/// not whole.
using Answerer = std::function<QByteArray(const QByteArray& received)>;

/// The software register, which judges each request.
Answerer liveRegister(Language language, const emulator::Identity& identity = {});
/// Answers at once what the software register said to the first request with that command, under the id of
/// the request that it gets.
Answerer rememberedRegister(Language language);
/// Gives these answers in turn, each when so many bytes have come as its request had.
Answerer playback(const QList<std::pair<qsizetype, QByteArray>>& answers);
/// A device with that many registers, which all hold the value that modbusValue tells.
Answerer modbusDevice(int registers);

constexpr quint16 modbusValue = 0x1234;
