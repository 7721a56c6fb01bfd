#pragma once

#include "fault.h"
#include "register/register.h"

/// Another program that works the same register, over another line: makes one document, if the register does
/// that now.
void actAsNeighbour(FaultKind deed, emulator::Register& device, emulator::Money price);
/// What the goods of its sales are called.
QString neighboursGoods();
