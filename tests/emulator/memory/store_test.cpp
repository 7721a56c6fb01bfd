// The folder of a state: who has it, what it refuses, and what it keeps apart.

#include "memory/memory.h"
#include "memory/memoryerror.h"
#include "memory/rowdigest.h"
#include "register/tlv.h"
#include "rig.h"
#include "tape/pagejson.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <unistd.h>

namespace {

using emulator::Memory;
using emulator::MemoryError;
using emulator::StateFolder;

class Store : public testing::Test
{
protected:
    Store()
    {
        rig.openShift();
        rig.run(sale());
        save();
    }

    std::unique_ptr<StateFolder> folder() const { return std::make_unique<StateFolder>(directory.path()); }
    void save() { Memory(folder()).save(rig.device); }
    QString file() const { return directory.filePath("register.sqlite"); }
    QByteArray bytes() const
    {
        QFile content(file());
        return content.open(QIODevice::ReadOnly) ? content.readAll() : QByteArray();
    }
    /// Statements of somebody else, with nothing of ours between.
    void change(const QStringList& statements) const
    {
        emulator::Database database(file(), emulator::Database::Access::ReadWrite);
        for (const QString& statement : statements)
            database.execute(statement);
    }
    /// What the work fails of; empty when it does not.
    template <typename Work>
    static std::string errorOf(const Work& work)
    {
        try {
            work();
        } catch (const MemoryError& error) {
            return error.text().toStdString();
        }
        return {};
    }
    std::string loadingError() const
    {
        return errorOf([this] {
            Memory memory(folder());
            emulator::Register device(rig.clock);
            memory.identity();
            memory.load(device);
        });
    }
    quint32 lastDocument() const
    {
        emulator::Register device(rig.clock);
        Memory(folder()).load(device);
        return device.drive().last().number;
    }

    QTemporaryDir directory;
    Rig rig;
};

QString digested(const QString& name, const QByteArray& content)
{
    return QStringLiteral("UPDATE parts SET content = '%1', digest = '%2' WHERE name = '%3'")
        .arg(QString(content), QString(emulator::rowDigest(name, content)), name);
}

TEST_F(Store, DamagedForeignAndNewerStatesAreRefusedAndLeftAsTheyAre)
{
    const QByteArray good = bytes();
    const QByteArray foreign = QByteArray(good).replace(68, 4, "ABCD");
    const std::tuple<const char*, QByteArray, QStringList, const char*> rows[] = {
        {"no database", QByteArray(10'000, 'x'), {}, "not a database"},
        {"emptied", {}, {}, "damaged: the file is empty"},
        {"cut off", good.left(good.size() / 2), {}, "malformed"},
        {"bytes lost", QByteArray(good).replace(4096, 400, QByteArray(400, '\0')), {}, "amage"},
        {"of another program", foreign, {}, "the database of another program"},
        {"newer", good, {"PRAGMA user_version = 99"}, "its format has version 99, this one knows up to 4"},
        {"content changed", good, {"UPDATE parts SET content = replace(content, '10000', '10001')"},
            "damaged: drawer is not what was written"},
        {"document changed", good, {"UPDATE documents SET page = replace(page, '100.00', '10.00')"},
            "damaged: document 3 is not what was written"},
        {"part lost", good, {"DELETE FROM parts WHERE name = 'shift'"}, "damaged: no good value of shift"},
        {"all parts lost", good, {"DELETE FROM parts"}, "damaged: no good value of "},
        {"last document lost", good, {"DELETE FROM documents WHERE number = 3"},
            "damaged: documents of the fiscal drive are missing"},
        {"a document lost", good, {"DELETE FROM documents WHERE number = 2"},
            "damaged: document 3 is out of order"},
        {"wrong type", good, {digested("drawer", R"({"cash":"5","openedAt":0})")},
            "damaged: no good value of drawer.cash"},
        {"fraction", good, {digested("drawer", R"({"cash":0.5,"openedAt":0})")},
            "damaged: no good value of drawer.cash"},
        {"too great", good, {digested("marking", R"({"notifications":4294967296,"results":{}})")},
            "damaged: no good value of marking.notifications"},
        {"no base64", good, {digested("logo", R"({"value":"*"})")}, "damaged: no good value of logo"},
        {"row of no parameter", good, {digested("parameters", R"({"20":"x"})")},
            "damaged: no good value of parameters.20"},
    };
    for (const auto& [what, damaged, statements, why] : rows) {
        SCOPED_TRACE(what);
        QFile content(file());
        ASSERT_TRUE(content.open(QIODevice::WriteOnly) && content.write(damaged) == damaged.size());
        content.close();
        if (!statements.isEmpty())
            change(statements);
        const QByteArray before = bytes();
        const std::string error = loadingError();
        EXPECT_NE(error.find(why), std::string::npos) << error;
        EXPECT_TRUE(bytes() == before);
    }
}

TEST_F(Store, DriveKeepsItsLife)
{
    emulator::Identity identity;
    identity.driveLife = {emulator::DriveLife::ready, 7, 10};
    const emulator::Register young(rig.clock, identity);
    const QTemporaryDir other;
    Memory(std::make_unique<StateFolder>(other.path())).save(young);
    emulator::Register device(rig.clock);
    Memory(std::make_unique<StateFolder>(other.path())).load(device);
    EXPECT_TRUE(device.drive().isReady());
    EXPECT_EQ(device.drive().last().number, 0U);
    EXPECT_EQ(device.drive().expiry(), young.drive().expiry());
    EXPECT_EQ(device.drive().memory().documentsLeft, 7);
}

TEST_F(Store, LogWithoutItsFileIsRefused)
{
    QFile::rename(file(), file() + "-wal");
    EXPECT_EQ(loadingError(), "damaged: the file is gone, its log is there");
}

TEST_F(Store, OneProcessAFolder)
{
    const auto mine = folder();
    EXPECT_EQ(errorOf([this] { folder(); }), "in use by process " + std::to_string(::getpid()));
}

TEST_F(Store, WhatChangesNothingWritesNothing)
{
    Memory memory(folder());
    memory.load(rig.device);
    rig.start();
    const QString log = file() + "-wal";
    memory.save(rig.device);
    const qint64 before = QFile(log).size();
    rig.ask(0xA0);
    rig.code({0x34, {}});
    memory.save(rig.device);
    EXPECT_EQ(QFile(log).size(), before);
    rig.code(open(2));
    memory.save(rig.device);
    EXPECT_GT(QFile(log).size(), before);
}

TEST_F(Store, CommitThatFailsKeepsNothingAndTheNextOneAll)
{
    Memory memory(folder());
    memory.load(rig.device);
    rig.start();
    rig.run(sale());
    {
        const emulator::Database intruder(file(), emulator::Database::Access::ReadWrite);
        intruder.execute("BEGIN IMMEDIATE");
        EXPECT_NE(errorOf([&] { memory.save(rig.device); }).find("locked"), std::string::npos);
    }
    EXPECT_EQ(Memory::documentsOf(directory.path()).size(), 3);
    memory.save(rig.device);
    EXPECT_EQ(Memory::documentsOf(directory.path()).size(), 4);
}

TEST_F(Store, StateOfTheFirstVersionIsBroughtUp)
{
    const auto documents = Memory::documentsOf(directory.path());
    change({"ALTER TABLE parts DROP COLUMN digest", "ALTER TABLE documents DROP COLUMN digest",
        "UPDATE parts SET content = json_remove(content, '$.documents') WHERE name = 'drive'",
        "UPDATE documents SET record = json_remove(record, '$.tags')", "PRAGMA user_version = 1"});
    EXPECT_NE(errorOf([this] { Memory::documentsOf(directory.path()); }).find("older"), std::string::npos);
    EXPECT_EQ(loadingError(), "");
    const auto migrated = Memory::documentsOf(directory.path());
    ASSERT_EQ(migrated.size(), documents.size());
    EXPECT_EQ(migrated.constLast().entry, documents.constLast().entry);
    EXPECT_EQ(emulator::tlv::decode(migrated.constLast().record.tags),
        emulator::tlv::decode(documents.constLast().record.tags));
    change({"UPDATE parts SET content = '{}' WHERE name = 'drawer'"});
    EXPECT_EQ(loadingError(), "damaged: drawer is not what was written");
}

TEST_F(Store, PagesThatWaitForPaperAreThoseOfTheThirdVersion)
{
    rig.device.setPaperLeft(2, false);
    rig.code({0x61, {"Иванова", ""}});
    save();
    const auto waiting = [this] {
        emulator::Register device(rig.clock);
        Memory(folder()).load(device);
        return device.state().paper.waiting;
    };
    QList<emulator::WaitingPage> pages = waiting();
    ASSERT_EQ(pages.size(), 1);
    EXPECT_EQ(pages.constFirst().document, 4U);
    const QJsonObject paper{{"isIn", false}, {"linesLeft", 0}, {"endsQuietly", false},
        {"waiting", QJsonArray{tape::toJson(pages.constFirst().page)}}};
    change(
        {digested("paper", QJsonDocument(paper).toJson(QJsonDocument::Compact)), "PRAGMA user_version = 3"});
    pages.first().document = 0;
    EXPECT_EQ(waiting(), pages);
}

TEST_F(Store, SnapshotsComeBack)
{
    folder()->keepSnapshot("one-sale");
    rig.run(sale());
    save();
    folder()->keepSnapshot("two");
    folder()->restoreSnapshot("one-sale");
    EXPECT_EQ(lastDocument(), 3U);
    folder()->restoreSnapshot("two");
    EXPECT_EQ(lastDocument(), 4U);
    folder()->keepSnapshot("one-sale");
    EXPECT_EQ(folder()->snapshots(), QStringList({"one-sale", "two"}));
    EXPECT_EQ(errorOf([this] { folder()->restoreSnapshot("three"); }),
        "it has no snapshot \"three\"; it has one-sale, two");
    for (const char* const name : {"", "../x", "a/b", ".x", "x\n"})
        EXPECT_FALSE(StateFolder::isSnapshotName(name)) << name;
    // One that is damaged leaves all as it is; a state that is damaged is put right by a good one.
    QFile snapshot(directory.filePath("snapshots/two.sqlite"));
    ASSERT_TRUE(snapshot.resize(5000));
    EXPECT_NE(errorOf([this] { folder()->restoreSnapshot("two"); }).find("\"two\" cannot be used"),
        std::string::npos);
    EXPECT_EQ(lastDocument(), 4U);
    ASSERT_TRUE(QFile(file()).resize(5000));
    EXPECT_NE(loadingError(), "");
    folder()->restoreSnapshot("one-sale");
    EXPECT_EQ(lastDocument(), 4U);
    // A relative name of the folder is none of the snapshots within it.
    StateFolder(QDir::current().relativeFilePath(directory.path())).keepSnapshot("relative");
    EXPECT_TRUE(folder()->snapshots().contains("relative"));
    change({"UPDATE documents SET page = '' WHERE number = 2"});
    EXPECT_EQ(errorOf([this] { folder()->keepSnapshot("relative"); }),
        "damaged: document 2 is not what was written");
    folder()->restoreSnapshot("relative");
    EXPECT_EQ(lastDocument(), 4U);
    QFile::remove(file());
    EXPECT_EQ(
        errorOf([this] { folder()->keepSnapshot("none"); }), "there is none that a snapshot could keep");
}

} // namespace
