#pragma once

#include "answererror.h"

namespace sale {

struct Failure;

/// What an answer says of the failure, with the findings of a receipt, the marking codes that were refused,
/// and whether a person is needed.
AnswerError answerErrorOf(const Failure& failure);

} // namespace sale
