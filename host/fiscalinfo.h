#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>

/// Registration data of a device. The drivers of this family leave it empty.
struct FiscalInfo
{
    int registrationIndex = 0;
    QDateTime registrationDateTime;
    /// Tax number of the owner.
    QString inn;
    QString registrationNumber;
    QString fnNumber;
    /// Mask of TaxSystemType (tag 1062).
    int taxSystems = 0;
    QString userName;
    QString settlementAddress;
    /// Mask of the modes of work (autonomous, encrypted and so on).
    int workMode = 0;
    /// Mask of the kinds of agents (tag 1057).
    int agentTypes = 0;
    QDateTime documentDateTime;
    QString ofdInn;
    /// RegistrationReason.
    int reasonCode = 0;
    QString ffdVersion;
    QJsonObject requisites;
    QString fiscalSign;
};
