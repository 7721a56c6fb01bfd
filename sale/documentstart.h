#pragma once

class AbstractFrDriver;
struct FrUser;

namespace receipt {
struct Receipt;
}

namespace sale {

/// Before every document, reports included: the driver forgets what the document before left in it, and gets
/// the cashier of this one. Nothing is sent. Throws FrCommandException without a cashier's name.
void startDocument(AbstractFrDriver& driver, const FrUser& cashier);

/// Gives the receipt the registered tax system when it names none. Throws FrCommandException unless there is
/// exactly one, and the driver's exceptions.
void completeTaxSystem(AbstractFrDriver& driver, receipt::Receipt& receipt);

} // namespace sale
