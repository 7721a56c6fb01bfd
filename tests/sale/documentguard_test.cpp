#include "documentguard.h"
#include "recordingdriver.h"

#include <gtest/gtest.h>

using namespace sale;

namespace {

TEST(DocumentGuard, DocumentsThatTheDriveDoesNotNumber)
{
    const struct
    {
        const char* failing;
        bool interrupt;
        bool cancelAfterClose;
        const char* calls;
        Outcome outcome;
        const char* refused = "";
    } rows[] = {
        {"", false, true, "open print close wait", Outcome::Issued},
        {"print", false, true, "open print cancel", Outcome::Cancelled},
        {"close", false, true, "open print close cancel", Outcome::Cancelled},
        {"close cancel", false, true, "open print close cancel", Outcome::Unasked},
        {"print", true, true, "open print cancel", Outcome::Cancelled},
        {"open cancel", true, true, "open cancel", Outcome::NotCancelled},
        // A register that answers so has no document.
        {"open", true, true, "open cancel", Outcome::None, "cancel"},
        {"close", true, true, "open print close cancel", Outcome::Cancelled},
        {"close", false, false, "open print close", Outcome::Unasked},
        {"wait", false, true, "open print close wait", Outcome::Issued},
    };
    BasicFrSettings settings;
    for (const auto& row : rows) {
        RecordingDriver driver(&settings);
        driver.failing = row.failing;
        driver.interrupt = row.interrupt;
        driver.refused = row.refused;
        DocumentSteps steps;
        steps.open = [&] { driver.note("open"); };
        steps.fill = [&] { driver.note("print"); };
        steps.close = [&] { driver.note("close"); };
        steps.finish = [&] { driver.note("wait"); };
        steps.cancelAfterClose = row.cancelAfterClose;
        const DocumentResult result = runDocument(driver, steps);
        EXPECT_EQ(driver.calls, row.calls) << row.failing;
        EXPECT_EQ(result.verdict, row.outcome) << row.failing;
        EXPECT_EQ(result.failure.has_value(), driver.failing != "") << row.failing;
    }
}

} // namespace
