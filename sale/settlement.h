#pragma once

#include "drivemark.h"
#include "movement.h"
#include "registerline.h"
#include "verdict.h"

class AbstractFrDriver;

namespace sale {

/// Finds out what has become of a document of ours that was begun when the register had that mark. To be
/// called after connect and before init. A document that was not issued is left behind by the register too:
/// it is initialised, and asked once more, since the initialisation finishes a document that can only be
/// finished. Nothing is cancelled while the outcome is unknown. Asks for the mark (HEX: that of noteMark and
/// 13 exchanges for the drive's last number, XML: readings until two in a row agree), once more if it
/// contradicts itself or says not issued. Writes nothing. Throws the driver's exceptions when the register
/// cannot be asked; then it may be called again.
Verdict settle(AbstractFrDriver& driver, const DriveMark& before, const Movement& ours,
    const RegisterLine& line, bool isOursAlone);
/// The same in another connection: the line was ours alone if nobody else works the register.
Verdict settle(
    AbstractFrDriver& driver, const DriveMark& before, const Movement& ours, const RegisterLine& line = {});

} // namespace sale
