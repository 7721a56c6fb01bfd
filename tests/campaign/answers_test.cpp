// Every error that a register has a code for, and every form in which it may answer, as our drivers tell
// them.

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "rig.h"
#include "spfhex/answercodes.h"
#include "spfxml/errortexts.h"

#include <gtest/gtest.h>

#include <typeindex>

namespace {

using emulator::FaultMode;
using spfhex::AnswerCode;

struct Outcome
{
    QString text;
    std::type_index kind = typeid(void);
};

/// The register's time as the driver reads it, or its failure.
Outcome askTime(Rig& rig, const emulator::Fault& fault)
{
    rig.protocol().setNextFault(fault);
    try {
        return {rig.driver().getDateTime().toString(Qt::ISODate)};
    } catch (const BasicException& failure) {
        return {failure.tr().ru(), typeid(failure)};
    }
}

void connect(Rig& rig)
{
    rig.line.open();
    rig.driver().portOpen();
    rig.driver().connect();
    rig.driver().init();
}

std::type_index exceptionOf(AnswerCode::Kind kind)
{
    switch (kind) {
    case AnswerCode::Paper:
        return typeid(FrPaperException);
    case AnswerCode::ShiftTooLong:
        return typeid(FrShiftTooLongException);
    case AnswerCode::Fatal:
        return typeid(FrFatalException);
    default:
        return typeid(FrCommandException);
    }
}

TEST(Answers, EachCodeOverHexIsToldInItsWords)
{
    Rig rig(Protocol::Hex);
    connect(rig);
    for (int code = 1; code <= 255; ++code) {
        const AnswerCode& expected = spfhex::answerCodeInfo(code);
        const Outcome outcome = askTime(rig, {FaultMode::Answer, code});
        EXPECT_EQ(outcome.text.toStdString(), expected.text.toString().toStdString()) << code;
        EXPECT_EQ(outcome.kind, exceptionOf(expected.kind)) << code;
    }
}

TEST(Answers, EachCodeOverXmlIsToldInItsWords)
{
    Rig rig(Protocol::Xml);
    connect(rig);
    const QMap<int, QString>& categories = spf::utils::errorCategoryTexts();
    const QMap<int, QString>& printer = spf::utils::printerErrorTexts();
    for (const int category : categories.keys()) {
        for (const int code : printer.keys() + spf::utils::errorTexts().keys() + QList<int>{777}) {
            const Outcome outcome = askTime(rig, {FaultMode::Answer, code, category});
            QString text = spf::utils::errorTexts().value(code, QStringLiteral("Ошибка %1").arg(code));
            if (category == 3 && printer.contains(code))
                text = printer.value(code);
            EXPECT_EQ(outcome.text, categories.value(category) + ". " + text) << category << '.' << code;
            const std::type_index kind
                = code == 8 ? typeid(FrWaitForPaperException) : typeid(FrCommandException);
            EXPECT_EQ(outcome.kind, kind) << category << '.' << code;
        }
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
            connect(rig);
            QString expected = askTime(rig, {}).text;
            for (const auto& [where, odd, text] : oddOutcomes)
                expected = where == protocol && odd == mode ? QString::fromUtf8(text) : expected;
            EXPECT_EQ(askTime(rig, {mode}).text.toStdString(), expected.toStdString())
                << emulator::FaultPlan::modeName(mode).toStdString();
            EXPECT_EQ(askTime(rig, {}).kind, typeid(void)) << "the next exchange is sound";
        }
    }
}

} // namespace
