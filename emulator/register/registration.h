#pragma once

#include <QString>

namespace emulator {

/// What the register is registered with at the tax authority.
struct Registration
{
    QString number = QStringLiteral("0000000001012345");
    QString taxSite = QStringLiteral("www.nalog.gov.ru");
    QString userInn = QStringLiteral("7701234567");
    QString userName = QStringLiteral("ООО \"РОМАШКА\"");
    QString address = QStringLiteral("г. Москва, ул. Полевая, д. 1");
    QString place = QStringLiteral("Магазин № 1");
    QString operatorInn = QStringLiteral("7709876543");
    QString operatorName = QStringLiteral("ОФД-ТЕСТ");
    /// Bits: 1 general, 2 simplified (income), 4 simplified (income less outcome), 8 imputed, 16
    /// agricultural, 32 patent.
    int taxSystems = 1 | 2 | 32;
    /// Bits of the mode of work; the register itself looks at that of marked goods alone.
    int modes = markedGoods;
    /// Kinds of agent that the user may be.
    int agents = 127;
    QString senderMail = QStringLiteral("check@shop.example");

    static constexpr int taxSystemCount = 6;
    static constexpr int markedGoods = 16;
};

} // namespace emulator
