#pragma once

#include "answerers.h"

#include <QString>

#include <memory>

class AbstractFrDriver;
class AbstractSerialDriver;
class FrSpfSettings;

/// Each registers its measurements, by names that begin with what is measured.
void registerRoundTrips();
void registerReceipts();
void registerAnswers();
void registerSales();

QString languageName(Language language);
std::unique_ptr<AbstractFrDriver> makeDriver(
    Language language, AbstractSerialDriver& transport, FrSpfSettings& settings);
/// A whole receipt of that many positions, paid in cash.
void sell(AbstractFrDriver& driver, int positions);
