#pragma once

#include "efrdriver.h"

#include <QStringView>

/// The Russian name of a tag of the fiscal data format; empty for one that is not in the table.
QStringView fdRequisiteName(EFrDriver::RequisiteTypes tag);
