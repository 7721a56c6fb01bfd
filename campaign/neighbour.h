#pragma once

#include "fault.h"
#include "movement.h"
#include "register/register.h"

/// Whether another program works the register, and whether the host knows that it may.
enum class Neighbour { None, Unexpected, Shared };

/// Another program that works the same register, over another line: makes one document, if the register does
/// that now; false when it does not. A sale of the same is one with the sums of ours.
bool actAsNeighbour(
    FaultKind deed, emulator::Register& device, emulator::Money price, const sale::Movement& ours);
/// What the goods of its sales are called.
QString neighboursGoods();
