#pragma once

#include "register/amounts.h"
#include "register/refusal.h"

#include <QJsonObject>

namespace emulator {

struct Document;
struct Item;
struct Parts;

/// Fills the open receipt and issues it.
class Receipts
{
public:
    explicit Receipts(Parts& parts)
        : m_parts(parts)
    {
    }

    /// Agent and supplier of the position that comes next.
    Refusal bindAgent(const QJsonObject& agent);
    /// Takes over the agent and the marking code that are bound.
    Refusal addItem(Item item);
    Refusal subtotal();
    Refusal pay(int kind, Money sum);
    Refusal close();

private:
    void settle(const Document& receipt);

    Parts& m_parts;
};

} // namespace emulator
