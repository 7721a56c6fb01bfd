#pragma once

#include "frhost_export.h"

#include <QDate>
#include <QStringList>

/// Records of the fiscal drive (FN).
class FRHOST_EXPORT FnUtils
{
public:
    /// How long the fiscal drive may be used and how often it can still be registered.
    struct FRHOST_EXPORT ValidityDate
    {
        /// The last day of use; invalid when it is not known.
        QDate date;
        /// How often it can still be registered.
        quint8 availableRegistrations = 0;
        quint8 registrationsMade = 0;

        /// Lines for a service screen.
        QStringList getStrInfo() const;
    };
};
