// Every form in which a register may answer, as our drivers tell it.

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "rig.h"

#include <gtest/gtest.h>

namespace {

using emulator::FaultMode;

/// The register's time as the driver reads it, or its failure.
QString askTime(Rig& rig, const emulator::Fault& fault)
{
    rig.protocol().setNextFault(fault);
    try {
        return rig.driver().getDateTime().toString(Qt::ISODate);
    } catch (const BasicException& failure) {
        return failure.tr().ru();
    }
}

// What is none of these is read as if it had come in the usual form.
const std::tuple<Protocol, FaultMode, const char*> oddOutcomes[] = {
    {Protocol::Xml, FaultMode::ShapeBehindForeign, "Некорректный ответ от ФР"},
    {Protocol::Xml, FaultMode::ShapeAbsent, ""},
    {Protocol::Xml, FaultMode::ShapeNoValues, ""},
    {Protocol::Xml, FaultMode::ShapeBrokenData, "Некорректный ответ от ФР"},
    {Protocol::Xml, FaultMode::ShapeResult00, "Неизвестная ошибка"},
    {Protocol::Xml, FaultMode::ShapeCode8, "Внутренняя ошибка. Ошибка 8"},
    {Protocol::Hex, FaultMode::ShapeNoFields, "Некорректный ответ от ФР"},
    {Protocol::Hex, FaultMode::ShapeNoCode, "Ошибка команды ККМ"},
};

TEST(Answers, EachFormIsReadOrRefused)
{
    for (const Protocol protocol : {Protocol::Hex, Protocol::Xml}) {
        for (const FaultMode mode : emulator::FaultPlan::allModes()) {
            if (mode < FaultMode::ShapeBytes)
                continue;
            Rig rig(protocol);
            rig.start();
            const QString sound = askTime(rig, {});
            QString expected = sound;
            for (const auto& [where, odd, text] : oddOutcomes)
                expected = where == protocol && odd == mode ? QString::fromUtf8(text) : expected;
            EXPECT_EQ(askTime(rig, {mode}).toStdString(), expected.toStdString())
                << emulator::FaultPlan::modeName(mode).toStdString();
            EXPECT_EQ(askTime(rig, {}), sound) << "the next exchange is sound";
        }
    }
}

} // namespace
