#pragma once

#include <QString>

/// The cashier.
struct FrUser
{
    QString name;
    QString position;
    /// Tax number (INN).
    QString inn;
};
