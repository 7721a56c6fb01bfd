#include "configuration/configuration.h"
#include "configuration/configurationerror.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QTemporaryDir>

using namespace frserver;

namespace {

class ConfigurationTest : public testing::Test
{
protected:
    Configuration read(const QByteArray& text) const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
        return Configuration::read(fileName);
    }

    /// Without the name of the file.
    QStringList errors(const QByteArray& text) const
    {
        try {
            read(text);
            return {};
        } catch (const ConfigurationError& error) {
            QStringList texts = error.texts();
            for (QString& one : texts) {
                EXPECT_TRUE(one.startsWith(fileName + ':')) << qPrintable(one);
                one.remove(0, fileName.size() + 1);
            }
            return texts;
        }
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("frserver.ini");
};

TEST_F(ConfigurationTest, SaysWhatEveryRegisterIs)
{
    const Configuration configuration = read(R"(# a shop
[service]
listen = 127.0.0.1:8403
journal = /var/lib/frspf/journal.sqlite
plugin = /usr/lib/frspf
queue-limit = 50

[webhook]
url = https://shop.example/hook
secret = "whsec_cyBlIGMgciBlIHQ="

[register till1]
port = /dev/ttyUSB0
protocol = hex
serial = 0010
inn = 7725225244
cashier = Иванова А. П.
cashier-inn = 772100000040
timezone = Asia/Vladivostok
shift = scheduled
shift-open = 8:00
shift-close = 22:30
start-before = 0
allow-test-drive = true
clock = set
marks = strict

[pool webshop]
registers = till1, till2
tax-systems = osn, patent
drain = 30 days, 5000 documents
start-before = 600

[register till2]
port = tcp:10.0.0.5:5555
protocol = XML
paperless = yes
drive-capacity = 250000
)");
    EXPECT_EQ(configuration.service.listen, "127.0.0.1:8403");
    EXPECT_EQ(configuration.service.listenPlace, fileName + ":3");
    EXPECT_EQ(configuration.service.queueLimit, 50);
    EXPECT_EQ(configuration.service.webhookSecret, "s e c r e t");
    ASSERT_EQ(configuration.registers.size(), 2);
    // What the worker is told is what the service was told.
    RegisterSettings told = RegisterSettings::fromJson(configuration.registers.at(0).toJson());
    EXPECT_EQ(told.toJson(), configuration.registers.at(0).toJson());
    EXPECT_EQ(told.protocol, receipt::Protocol::Hex);
    EXPECT_EQ(told.expected.inn, "7725225244");
    EXPECT_EQ(told.cashier, "Иванова А. П.");
    EXPECT_EQ(told.timeZone, QTimeZone("Asia/Vladivostok"));
    EXPECT_EQ(told.clock, ClockRule::Set);
    EXPECT_EQ(told.marks, sale::MarkPolicy::Strict);
    EXPECT_TRUE(told.allowsTestDrive);
    EXPECT_TRUE(told.isExclusive);
    EXPECT_EQ(told.plugins, QStringList{"/usr/lib/frspf"});
    const RegisterSettings& scheduled = configuration.registers.at(0);
    EXPECT_EQ(scheduled.shift, ShiftRule::Scheduled);
    EXPECT_EQ(scheduled.shiftClose, QTime(22, 30));
    EXPECT_EQ(scheduled.startBefore, 0);
    // Over TCP others may work it, too.
    const RegisterSettings& usual = configuration.registers.at(1);
    EXPECT_FALSE(usual.isExclusive);
    EXPECT_FALSE(usual.allowsTestDrive);
    EXPECT_EQ(usual.startBefore, 120);
    EXPECT_TRUE(usual.isPaperless && !scheduled.isPaperless);
    EXPECT_EQ(usual.driveCapacity, 250'000);
    ASSERT_EQ(configuration.pools.size(), 1);
    const PoolSettings& pool = configuration.pools.constFirst();
    EXPECT_EQ(pool.name, "webshop");
    EXPECT_EQ(pool.registers, (QStringList{"till1", "till2"}));
    EXPECT_EQ(pool.taxSystems, (QStringList{"osn", "patent"}));
    EXPECT_EQ(std::pair(pool.drain.days, pool.drain.documents), std::pair(30, 5000));
    EXPECT_EQ(pool.startBefore, 600);
    // What a pool says of its registers is compared.
    EXPECT_EQ(read("[pool shop]\nregisters=a\ninn=7725225244\n[register a]\nport=x\nprotocol=HEX\n")
                  .registers.constFirst()
                  .expected.inn,
        "7725225244");
}

TEST_F(ConfigurationTest, TellsAllThatIsWrongWithItsLine)
{
    EXPECT_EQ(errors("[service]\nlisten=1\nlimit=3\n[till1]\n[register a/b]\nport=x\nprotocol=CSV\n"),
        (QStringList{
            "3: [service] has no key limit; there are listen, journal, tokens, tls-certificate, tls-key, plugin, queue-limit",
            "4: [till1] is none of [service], [store], [webhook], [register NAME], [pool NAME]",
            "5: the register \"a/b\": a name has letters, digits, dots, _ and -, 64 at most",
            "7: protocol: \"CSV\" is none of XML, HEX"}));
    EXPECT_EQ(errors("[webhook]\nurl=ftp://a\n"),
        (QStringList{
            "2: url: \"ftp://a\" is no http or https address", "1: [webhook] needs url and secret"}));
    EXPECT_EQ(errors("[webhook]\nurl=http://a\nsecret=whsec_a?b\n[register a]\nport=x\nprotocol=HEX\n"),
        QStringList{"3: secret: behind whsec_ stands no base64"});
    EXPECT_EQ(errors("[register a]\nport=x\nprotocol=HEX\nport=y\n"),
        QStringList{"4: [register a] port is there already"});
    EXPECT_EQ(errors(""), QStringList{" has no [register NAME]"});
    // It may answer for those of other machines alone.
    EXPECT_TRUE(read("[store]\nurl=postgresql:///rack\n[pool shop]\ntax-systems=osn\n").registers.isEmpty());
    EXPECT_EQ(errors("[register a]\nport=\xcf\xee\n").size(), 1);
}

TEST_F(ConfigurationTest, RefusesWhatARegisterCannotBe)
{
    // Behind three lines that are right.
    const std::pair<const char*, const char*> wrong[] = {
        {"serial =", "4: serial: is empty"},
        {"[store]\nurl = db.sqlite", "5: url: is no postgresql://USER@HOST:PORT/DATABASE"},
        {"[store]\nurl = postgresql://a:secret@db",
            "5: url: the address of the database names no database: it looks like "
            "postgresql://USER@HOST:PORT/DATABASE"},
        {"[service]\njournal = a\n[store]\nurl = postgresql:///rack",
            "6: [store] goes without journal of [service]"},
        {"[store]\nlease = 5", "4: [store] needs a url"},
        {"[store]\nurl = postgresql:///rack\nlease = 2", "6: lease: \"2\" is not a number from 3 to 600"},
        {"inn = 123", "4: inn: \"123\" has not 10 or 12 digits"},
        {"cashier = \x01", "4: cashier: has the control character U+0001 at character 1"},
        {"cashier-inn = 772100000041", "4: cashier-inn: \"772100000041\" is no tax number"},
        {"timezone = Moscow", "4: timezone: \"Moscow\" is no time zone as Europe/Moscow"},
        {"shift = never", "4: shift: \"never\" is none of manual, onSale, scheduled"},
        {"shift-open = 8:00", "1: [register a] shift-open and shift-close go with shift = scheduled"},
        {"shift = scheduled\ncashier = B",
            "1: [register a] shift-open and shift-close go with shift = scheduled"},
        {"shift = scheduled\nshift-open = 8:00\nshift-close = 9:00",
            "1: [register a] shift = scheduled needs a cashier, whose Z reports they are"},
        {"shift = scheduled\ncashier = B\nshift-open = 8:00\nshift-close = 25:00",
            "7: shift-close: \"25:00\" is no time as 22:30"},
        {"start-before = -1", "4: start-before: \"-1\" is not a number from 0 to 604800"},
        {"exclusive = maybe", "4: exclusive: \"maybe\" is neither yes nor no"},
        {"clock = stop", "4: clock: \"stop\" is none of warn, set"},
        {"marks = none", "4: marks: \"none\" is none of strict, warn, any"},
        {"[register b]\nport = x\nprotocol = HEX", "4: [register b] has the port of another register"},
        {"[register b]\nport = tcp:y\nprotocol = HEX", "5: port: \"tcp:y\" is no tcp:HOST:PORT"},
        {"[register b]\nport = y\nprotocol = XML\ninn = 7725225244",
            "4: [register b] over XML the register is known by its serial number alone: serial = ..."},
        {"[register b]\nprotocol = HEX", "4: [register b] needs a port"},
        {"paperless = 1", "4: paperless: \"1\" is neither yes nor no"},
        {"drive-capacity = 0", "4: drive-capacity: \"0\" is not a number from 1 to 100000000"},
        {"[pool p/q]\nregisters = a",
            "4: the pool \"p/q\": a name has letters, digits, dots, _ and -, 64 at most"},
        {"[pool p]", "4: [pool p] needs registers"},
        {"[pool p]\nregisters = a,, a", "4: [pool p] names the register , and there is no [register ]"},
        {"[pool p]\nregisters = b", "4: [pool p] names the register b, and there is no [register b]"},
        {"[pool p]\nregisters = a\ntax-systems = osn,usn",
            "6: tax-systems: \"usn\" is none of osn, usnIncome, usnIncomeOutcome, envd, esn, patent"},
        {"[pool p]\nregisters = a\ndrain = 30", "6: drain: \"30\" is nothing as 30 days, 5000 documents"},
        {"[pool p]\nregisters = a\ndrain = 0 days", "6: drain: \"0\" is not a number from 1 to 100000000"},
        {"inn = 7725225244\n[pool p]\nregisters = a\ninn = 7725225245",
            "5: [pool p] has another inn than its register a"},
        {"[pool p]\nregisters = b\ninn = 7725225244\n[register b]\nport = y\nprotocol = XML",
            "4: [pool p] has an inn, and its register b over XML is known by its serial number alone: "
            "serial = ..."},
        {"[register b]\nport = y", "4: [register b] needs a protocol, HEX or XML"},
    };
    for (const auto& [lines, error] : wrong)
        EXPECT_EQ(errors(QByteArray("[register a]\nport = x\nprotocol = HEX\n") + lines), QStringList{error});
    for (const QString& unreadable : {folder.filePath("nowhere"), QString("/dev/zero")})
        EXPECT_THROW(Configuration::read(unreadable), ConfigurationError) << unreadable.toStdString();
}

} // namespace
