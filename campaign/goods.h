#pragma once

#include "random.h"
#include "receipt.h"

/// A sale of one to three positions of that name, perhaps with a marking code, a line of text and a card.
receipt::Receipt drawSale(const QString& name, Random& content);
