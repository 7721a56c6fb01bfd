#pragma once

#include "register/amounts.h"
#include "register/refusal.h"

class QDateTime;

namespace emulator {

struct Document;
struct Item;
struct OpenDocument;
struct Paper;
struct Parts;
struct Registration;
struct State;

/// What the register thinks of a step before it takes it. Nothing here changes anything.
namespace judgement {

/// The cover is shut, and there is paper.
Refusal printer(const Paper& paper);
/// A report or a document may begin: none is open, and there is paper where it needs some.
Refusal ready(const State& state, bool needsPaper = true);
/// The fiscal drive may store another document.
Refusal drive(const Parts& parts);
/// It may besides take documents that begin something new: not while the OFD has not got the older ones for
/// long.
Refusal newDocuments(const Parts& parts);
/// Time cannot go back behind the last document.
Refusal time(const QDateTime& time, const Parts& parts);
Refusal opening(const Document& head, const Parts& parts);
/// Text or a picture for the open document.
Refusal printing(const State& state);
/// A position, or what belongs to one, has its place in the open document.
Refusal positions(const Document& document);
/// What no position can have, for whoever writes the host; null when there is nothing of the kind.
const char* misfit(const Item& item);
Refusal item(const Item& item, const OpenDocument& open);
Refusal subtotal(const OpenDocument& open);
Refusal payment(const Document& document, int kind, Money sum);
Refusal closing(const Document& receipt, const Parts& parts);
/// The sum of a cash-in or cash-out.
Refusal money(const State& state, Money sum);
Refusal reregistration(const Registration& registration, const Parts& parts);

} // namespace judgement

} // namespace emulator
