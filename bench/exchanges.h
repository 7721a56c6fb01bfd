#pragma once

/// Prints how many exchanges a sale takes through the library of sales, and their time on a line at 115200
/// baud.
void printExchanges();
