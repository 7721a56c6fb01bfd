#include "commandline.h"
#include "configuration.h"
#include "optiontable.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace frctl;

namespace {

/// A file of the user's with that text, and what a command line makes of it.
class Configured : public testing::Test
{
protected:
    Configured()
    {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toLocal8Bit());
        QDir(m_folder.path()).mkdir("frspf");
    }
    ~Configured() override { qunsetenv("XDG_CONFIG_HOME"); }

    void write(const QByteArray& text, const QString& name = "frspf/frctl.ini") const
    {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    QString path(const char* name = "frspf/frctl.ini") const { return m_folder.filePath(name); }

    static QString error(const QString& line) { return QString::fromStdString(usageError(line)); }

    const QTemporaryDir m_folder;
};

TEST_F(Configured, RegisterIsTakenByItsNameAndTheCommandLineGoesBefore)
{
    write("; tills\n[till1]\nport = tcp:host:7\nprotocol=hex\ncashier = \"Иванова А. П.\"\nstrict = no\n"
          "plugin = 'a=b\n[till2]\nport=/dev/x\nno-speed-enumeration = yes\n");
    const Options first = parse("status --register till1");
    EXPECT_EQ(first.port, "tcp:host:7");
    EXPECT_EQ(first.protocol, "HEX");
    EXPECT_EQ(first.cashier.name, "Иванова А. П.");
    EXPECT_EQ(first.plugins, QStringList{"'a=b"});
    EXPECT_FALSE(first.isExclusive);
    EXPECT_FALSE(first.strict);
    const Options other = parse("--port /dev/y status --register till2 --protocol XML --plugin c");
    EXPECT_EQ(other.port, "/dev/y");
    EXPECT_EQ(other.plugins, QStringList{"c"});
    EXPECT_FALSE(other.speedEnumerate);
    EXPECT_TRUE(other.isExclusive);
    // Without its name none is taken, not even the only one.
    write("[till1]\nport = /dev/x\n");
    EXPECT_TRUE(parse("status").port.isEmpty());
}

TEST_F(Configured, UserGoesBeforeTheMachineKeyByKey)
{
    write("[a]\nstrict = no\nport = /dev/x\n");
    write("[a]\nstrict = yes\nport = /dev/y\nno-speed-enumeration = yes\n", "machine.ini");
    const Configuration configuration({path(), path("none"), path("machine.ini")});
    QStringList settings;
    for (const Setting& setting : configuration.require("a").settings)
        settings.append(QLatin1String(setting.option->key) + '=' + setting.value);
    EXPECT_EQ(settings, (QStringList{"port=/dev/x", "no-speed-enumeration=yes"}));
}

TEST_F(Configured, MistakesNameFileSectionAndKey)
{
    const std::pair<const char*, const char*> rows[]
        = {{"[a]\nport=x\n[b]\nprot=XML", "%1: [b] prot: no such key"},
            {"[b]\nprotocol=2", "%1: [b] protocol: \"2\" is neither"},
            {"[b]\nstrict=on", "%1: [b] strict: \"on\""}, {"[b]\nid=12345678", "%1: [b] id: no such"},
            {"port=x", "%1:1: port stands before"}, {"[a]\nport", "%1:2: \"port\" is no KEY"},
            {"[a", "%1:1: \"[a\" is no [NAME]"}, {"[a]\n\n[a]", "%1:3: [a] is there already"},
            {"[a]\nport=x\nport=y", "%1:3: [a] port is there"},
            {"[a1]\nport=x", "--register: there is no [a] in %1 or /etc/frspf/frctl.ini; did you mean a1?"},
            {"[a]\nport=\xCF", "%1: "}, {"[a]\ninn=7721000003", "%1: [a] inn: over XML"},
            {"[a]\ninn=7721000003\nserial=1", ""}, {"[a]\ninn=7721000003\nprotocol=HEX", ""},
            {"[a]\nprotocol=XML", ""}};
    for (const auto& [text, expected] : rows) {
        write(text);
        const QString told = error("config --register a");
        EXPECT_TRUE(told.startsWith(QString(expected).replace("%1", path()))) << text << told.toStdString();
        EXPECT_EQ(told.isEmpty(), *expected == 0) << told.toStdString();
    }
    EXPECT_TRUE(error("--config " + path("none") + " --register a status").startsWith(path("none") + ": "));
    EXPECT_TRUE(error("--config " + path() + " status").startsWith("--config needs"));
    EXPECT_TRUE(error("config list a").startsWith("config takes"));
    // Whoever asks for help gets it.
    write("[a");
    EXPECT_TRUE(parse("--register a status --help").help);
}

TEST_F(Configured, ShowTellsWhatHoldsAndFromWhere)
{
    write("[a]\nport=/dev/x\nprotocol=XML\n[b]\nport=/dev/z", "other.ini");
    const auto shown = [&](const QString& line) {
        const Options options = parse("--config " + path("other.ini") + ' ' + line);
        return findCommand(options).prepare(options).alone();
    };
    EXPECT_EQ(shown("config list").lines, (QStringList{"a", "b"}));
    EXPECT_EQ(shown("config path").lines, QStringList{path("other.ini")});
    EXPECT_EQ(shown("config show b").lines,
        (QStringList{"[b]", "# " + path("other.ini") + ": [b] port", "port = /dev/z"}));
    const Output output = shown("config --register a --protocol HEX");
    EXPECT_EQ(output.lines,
        (QStringList{"[a]", "# " + path("other.ini") + ": [a] port", "port = /dev/x", "# command line",
            "protocol = HEX"}));
    EXPECT_EQ(output.json["registers"][0]["settings"][1]["origin"], "command line");
}

} // namespace
