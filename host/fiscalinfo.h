#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QString>

/// Registration data of a device.
struct FiscalInfo
{
    int registrationIndex = 0;
    QDateTime registrationDateTime;
    QString inn;
    QString registrationNumber;
    QString fnNumber;
    int taxSystems = 0;
    QString userName;
    QString settlementAddress;
    int workMode = 0;
    int agentTypes = 0;
    QDateTime documentDateTime;
    QString ofdInn;
    int reasonCode = 0;
    QString ffdVersion;
    QJsonObject requisites;
    QString fiscalSign;
};
