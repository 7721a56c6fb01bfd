#include "basicfrdriver.h"

// Shifts, reports, counters and the fiscal drive as a driver answers that has none of its own for them.

void BasicFrDriver::printLastFnDocument() { }

void BasicFrDriver::printFnDocument(long) { }

FnDocument BasicFrDriver::getFnDocument(unsigned long long)
{
    return {};
}

void BasicFrDriver::vatReport() { }

QJsonObject BasicFrDriver::zReport()
{
    return {};
}

QJsonObject BasicFrDriver::xReport()
{
    return {};
}

QJsonObject BasicFrDriver::xReportDept()
{
    return {};
}

MoneyCounters BasicFrDriver::getMoneyCounters(hw::fr::CheckType)
{
    return {};
}

QMap<int, double> BasicFrDriver::getCheckCounters(hw::fr::CheckType)
{
    return {};
}

QMap<int, double> BasicFrDriver::getPositionCounters(hw::fr::CheckType) const
{
    return {};
}

int BasicFrDriver::getLastShiftNumber()
{
    return 0;
}

void BasicFrDriver::fpReportInDatesRange(const QString&, long, long, bool) { }

void BasicFrDriver::fpReportInShiftsRange(const QString&, long, long, bool) { }

void BasicFrDriver::fiscalization(const QString&, const QString&, const QString&, const QString&) { }

KkmRegisterBeg BasicFrDriver::getKkmRegisterBeg()
{
    return {};
}

KkmRegisterEnd BasicFrDriver::getKkmRegisterEnd()
{
    return {};
}

QString BasicFrDriver::getFrDocNum()
{
    return {};
}

QString BasicFrDriver::getFrDocNumAfterClosing()
{
    return {};
}

QString BasicFrDriver::getFrDocCopy(long)
{
    return {};
}

int BasicFrDriver::getFrDocOffset()
{
    return -1;
}

void BasicFrDriver::d2dReport(const QDateTime&, const QDateTime&, bool) { }

void BasicFrDriver::z2zReport(unsigned int, unsigned int, bool) { }

void BasicFrDriver::openShift() { }

bool BasicFrDriver::isShiftOpen()
{
    return true;
}

void BasicFrDriver::printEj() { }

QString BasicFrDriver::getEj(int)
{
    return {};
}

void BasicFrDriver::accountingReport() { }

OfdStatusInfo BasicFrDriver::getOfdStatusInfo()
{
    return {};
}

FnInfo BasicFrDriver::getFnInfo()
{
    return {};
}

FiscalInfo BasicFrDriver::getFiscalInfo(int, bool)
{
    return fiscalInfo;
}

QString BasicFrDriver::getFfdVersion()
{
    return {};
}

int BasicFrDriver::getCheckCountersTries() const
{
    return 1;
}

hw::fr::common::TaxSystemType BasicFrDriver::getDefaultTaxSystem() const
{
    return hw::fr::common::TaxSystemNone;
}

QList<hw::fr::common::TaxSystemType> BasicFrDriver::getAllTaxSystems() const
{
    return {};
}

QMap<int, QString> BasicFrDriver::getRelatedCounters() const
{
    return {};
}

void BasicFrDriver::registration(const QList<hw::fr::common::TaxSystemType>&, hw::fr::common::TaxSystemType,
    const QString&, const QList<RegistrationReason>&, const QMap<QString, QVariant>&)
{
}

bool BasicFrDriver::isRegistrationParametersChanged(const QMap<QString, QVariant>&) const
{
    return false;
}

int BasicFrDriver::getAnnulationCounter()
{
    return 0;
}

void BasicFrDriver::printLastZReport() { }
