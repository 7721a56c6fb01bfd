// A person says what has become of a document.

#include "apirig.h"
#include "sale/hostclock.h"

namespace {

using ResolveTest = ApiTest;

TEST_F(ResolveTest, BelievesNoNumberThatTheDriveHadNotReachedBehindIt)
{
    for (const char* const id : {"document:1", "document:2"}) {
        post(id, sale());
        lose(id);
    }
    till1.drive = "9999000000000001";
    const sale::HostClock later(3600);
    const std::tuple<QByteArray, QByteArray, int, int> rows[]
        = {{"document:1", "118", 5, 409}, {"document:1", "117", 5, 200},
            // The register was not asked since.
            {"document:2", "118", 3601, 200}};
    for (const auto& [id, number, conditionAge, status] : rows) {
        till1.conditionAge = conditionAge;
        const Served said = ask("POST", "/v1/documents/" + id + "/resolve",
            R"({"state":"issued","documentNumber":)" + number + "}");
        EXPECT_EQ(said.status, status) << said.all();
        EXPECT_TRUE(status == 200 || said.text("detail").contains("had reached number 117")) << said.all();
    }
}

} // namespace
