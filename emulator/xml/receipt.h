#pragma once

#include "register/document.h"
#include "xml/print.h"
#include "xml/tree.h"
#include "xml/verdict.h"

namespace emulator {

/// A receipt as the tree of the receipt command tells it, ready to be entered into the register.
struct XmlReceipt
{
    Document head;
    /// With marking code and agent in their fields.
    QList<Item> items;
    Payments payments{};
    QList<PrintPiece> above;
    QList<PrintPiece> below;
    /// Behind everything else.
    QList<PrintPiece> tail;

    /// The tree must have passed the rule of the receipt.
    XmlVerdict read(const XmlNode& tree, bool strict);

private:
    XmlVerdict readHead(const XmlNode& tree);
    XmlVerdict readTexts(const XmlNode& tree);
    XmlVerdict readItem(const XmlNode& position);
    XmlVerdict settlePayments(const XmlNode& tree);
    bool isPaid(Money paid) const;

    bool m_strict = true;
    /// Price times quantity less discount of all positions, in thousandths of a kopeck.
    qint64 m_exactTotal = 0;
};

} // namespace emulator
