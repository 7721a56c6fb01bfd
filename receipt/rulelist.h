#pragma once

namespace receipt {

struct Judgement;

/// The rules; each looks at the whole receipt.
namespace rules {

/// How many positions a document may have.
void positionCount(Judgement& judgement);
/// Tax rates of the day of the sale.
void rates(Judgement& judgement);
/// Payment methods of the positions (tag 1214) against the kinds of payment (1031, 1081, 1215 to 1217).
void payments(Judgement& judgement);
/// A receipt that is not printed must reach the buyer.
void delivery(Judgement& judgement);
/// The cashier's name in the shift that the receipt may open.
void cashier(Judgement& judgement);
/// A buyer who is named needs name and tax number.
void buyer(Judgement& judgement);
/// Whose goods an agent sells.
void agents(Judgement& judgement);
/// Check digits of the tax numbers.
void taxNumbers(Judgement& judgement);
/// How each marking code was scanned.
void markSyntax(Judgement& judgement);
/// Payment objects (1212) that the register takes with a code alone.
void missingMarks(Judgement& judgement);
/// A code stands for one piece.
void markedPieces(Judgement& judgement);

} // namespace rules

} // namespace receipt
