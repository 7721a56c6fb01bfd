#include "marknoting.h"
#include "recordingdriver.h"

#include <gtest/gtest.h>

using namespace sale;

namespace {

constexpr auto hexProtocol = receipt::Protocol::Hex;
constexpr auto xmlProtocol = receipt::Protocol::Xml;

TEST(NoteMark, AsksWhatTheProtocolTellsOfTheDocument)
{
    const std::tuple<receipt::Protocol, DocumentKind, QList<quint32>, quint32, const char*> rows[] = {
        {hexProtocol, DocumentKind::Sale, {7, 8}, 0, "registers next sums"},
        {xmlProtocol, DocumentKind::Sale, {7, 8}, 7, "ask sums"},
        {xmlProtocol, DocumentKind::Sale, {0, 8}, 8, "ask sums ask sums"},
        {xmlProtocol, DocumentKind::OtherReceipt, {7}, 7, "ask"},
        {hexProtocol, DocumentKind::CashIn, {7}, 0, "registers cash"},
        {xmlProtocol, DocumentKind::CashOut, {7}, 0, "registers cash"},
        {hexProtocol, DocumentKind::Report, {7, 8}, 7, "ask"},
        {xmlProtocol, DocumentKind::Report, {7, 7, 8}, 7, "ask ask"},
        {xmlProtocol, DocumentKind::ShiftClosing, {1, 7, 2, 7, 7}, 7, "ask ask ask ask ask"},
    };
    BasicFrSettings settings;
    for (const auto& [protocol, kind, numbers, number, calls] : rows) {
        RecordingDriver driver(&settings);
        driver.numbers = numbers;
        const DriveMark mark = noteMark(driver, protocol, kind);
        EXPECT_EQ(mark.lastDocument, number) << calls;
        EXPECT_EQ(mark.drive, driver.drive);
        EXPECT_EQ(driver.calls, calls);
    }
}

TEST(NoteMark, ReadingsThatNeverAgreeTellNothing)
{
    BasicFrSettings settings;
    RecordingDriver driver(&settings);
    for (quint32 number = 1; number < 100; ++number)
        driver.numbers.append(number);
    EXPECT_EQ(noteMarkAfterFailure(driver, {}, DocumentKind::Sale), DriveMark());
}

} // namespace
