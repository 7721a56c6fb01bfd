#include "documentguard.h"
#include "recordingdriver.h"

#include <gtest/gtest.h>

using namespace sale;

namespace {

TEST(DocumentGuard, DocumentsThatTheDriveDoesNotNumber)
{
    // The last two are interrupted, too: a register that refuses a cancellation has no document.
    enum Case { Usual, Uncancelled, Interrupted, WithoutADocument };
    const std::tuple<const char*, Case, const char*, Outcome> rows[] = {
        {"", Usual, "open print close wait", Outcome::Issued},
        {"print", Usual, "open print cancel", Outcome::Cancelled},
        {"close", Usual, "open print close cancel", Outcome::Cancelled},
        {"close cancel", Usual, "open print close cancel", Outcome::Unasked},
        {"print", Interrupted, "open print cancel", Outcome::Cancelled},
        {"open cancel", Interrupted, "open cancel", Outcome::NotCancelled},
        {"open", WithoutADocument, "open cancel", Outcome::None},
        {"close", Interrupted, "open print close cancel", Outcome::Cancelled},
        {"close", Uncancelled, "open print close", Outcome::Unasked},
        {"wait", Usual, "open print close wait", Outcome::Issued},
    };
    BasicFrSettings settings;
    for (const auto& [failing, given, calls, outcome] : rows) {
        RecordingDriver driver(&settings);
        driver.failing = failing;
        driver.interrupt = given >= Interrupted;
        driver.refused = given == WithoutADocument ? "cancel" : "";
        DocumentSteps steps;
        steps.open = [&] { driver.note("open"); };
        steps.fill = [&] { driver.note("print"); };
        steps.close = [&] { driver.note("close"); };
        steps.finish = [&] { driver.note("wait"); };
        steps.cancelAfterClose = given != Uncancelled;
        const DocumentResult result = runDocument(driver, steps);
        EXPECT_EQ(driver.calls, calls) << failing;
        EXPECT_EQ(result.verdict, outcome) << failing;
        EXPECT_EQ(result.failure.has_value(), driver.failing != "") << failing;
    }
}

} // namespace
