#pragma once

#include <QStringView>

namespace spfhex {

/// What the device means by an answer code other than 0.
struct AnswerCode
{
    /// The exception that the host gets.
    enum Kind { Command, Paper, ShiftTooLong, Fatal };

    int code;
    QStringView text;
    Kind kind;
};

/// The row of a code; the one of unknown errors for a code that the protocol does not name.
const AnswerCode& answerCodeInfo(int code);

} // namespace spfhex
