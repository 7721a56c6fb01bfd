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
    const struct
    {
        const char* id;
        int number;
        int conditionAge;
        int status;
    } rows[] = {{"document:1", 118, 5, 409}, {"document:1", 117, 5, 200},
        // The register was not asked since.
        {"document:2", 118, 3601, 200}};
    for (const auto& row : rows) {
        till1.conditionAge = row.conditionAge;
        const Served said = ask("POST", QByteArray("/v1/documents/") + row.id + "/resolve",
            QByteArray(R"({"state":"issued","documentNumber":)") + QByteArray::number(row.number) + "}");
        EXPECT_EQ(said.status, row.status) << said.all();
        EXPECT_TRUE(row.status == 200 || said.text("detail").contains("had reached number 117"))
            << said.all();
    }
}

} // namespace
