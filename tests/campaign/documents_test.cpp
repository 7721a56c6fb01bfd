// The fiscal drive of the software register keeps all that the receipts of examples/ say.

#include "../emulator/kept.h"
#include "receiptissuer.h"
#include "receiptparser.h"
#include "rig.h"

#include "abstractfrdriver.h"

#include <QDir>
#include <QFile>

namespace {

class KeptExamples : public testing::TestWithParam<Protocol>
{
};

TEST_P(KeptExamples, AreWhole)
{
    Rig rig(GetParam());
    rig.device.setOperatorReachable(true);
    rig.line.open();
    rig.driver().portOpen();
    rig.driver().connect();
    rig.driver().init();
    const QString other = GetParam() == Protocol::Xml ? "-hex.json" : "-xml.json";
    const QDir folder(QStringLiteral(FRSPF_EXAMPLES));
    for (const QString& name : folder.entryList({"*.json"})) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        if (name.endsWith(other))
            continue;
        const auto result = sale::issueReceipt(rig.driver(), receipt::receiptFromText(file.readAll()));
        EXPECT_TRUE(result.isIssued()) << name.toStdString();
    }
    EXPECT_TRUE(rig.driver().zReport().isEmpty());
    expectAllKept(rig.device);
}

INSTANTIATE_TEST_SUITE_P(Protocols, KeptExamples, testing::Values(Protocol::Hex, Protocol::Xml),
    [](const auto& test) { return test.param == Protocol::Xml ? std::string("XML") : std::string("HEX"); });

} // namespace
