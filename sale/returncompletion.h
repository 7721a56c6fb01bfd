#pragma once

#include "receipt.h"

#include <QByteArray>

#include <optional>

namespace sale {

struct StoredDocument;

/// The receipt that a body in the journal was made of; nothing for one that is none, or is not kept any more.
/// What the host had split is split again.
std::optional<receipt::Receipt> keptReceipt(const QByteArray& body);

/// The body of a return of that sale, with what its positions leave out: price and amount as they were
/// issued, after the discount, the tax and what else the sale says of the goods. A position is known by its
/// marking code, else by its name; one that was sold at several prices must name the one.
QByteArray completedReturn(const QByteArray& body, const StoredDocument& sale);

} // namespace sale
