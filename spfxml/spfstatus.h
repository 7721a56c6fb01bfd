#pragma once

#include "fnstatus.h"
#include "ofdstatus.h"
#include "statustext.h"

#include <QString>

namespace spfxml {

/// All that the register tells of itself: a snapshot of one query. What the answers lack stays empty or 0.
struct SpfStatus
{
    SpfStatus(const QDomDocument& state, const QDomDocument& info);
    /// From answers whose elements were found before.
    SpfStatus(const StatusTexts& state, const StatusTexts& info);

    /// Three headings, each with an indented block below it.
    QString toString() const;

    QString networkInterface;
    /// Characters.
    int paperWidth;
    /// Factory number of the register.
    QString kktNumber;
    QString registrationNumber;
    QString kktFwVersion;
    QString swVersion;
    QString ffdVersion1190;
    QString ffdVersion1189;
    FnStatus fn;
    OfdStatus ofd;
};

} // namespace spfxml
