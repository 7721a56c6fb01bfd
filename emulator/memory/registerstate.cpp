#include "memory/registerstate.h"

#include "memory/devicestate.h"
#include "memory/documentstate.h"
#include "memory/shiftstate.h"
#include "memory/statereader.h"
#include "memory/statewriter.h"

#include <QJsonDocument>

namespace emulator::registerstate {

namespace {

const QString valueKey = QStringLiteral("value");

// A part that is no record of its own stands in an object.
QByteArray compact(const QJsonValue& value)
{
    const QJsonObject object = value.isObject() ? value.toObject() : QJsonObject{{valueKey, value}};
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QJsonObject objectOf(const QByteArray& json, const QString& name)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        StateReader::fail(name);
    return document.object();
}

template <typename T>
T valueOf(const QByteArray& json, const QString& name)
{
    T value{};
    StateReader::decode(objectOf(json, name).value(valueKey), name, value);
    return value;
}

template <typename T>
void read(const States& states, const char* name, T& value)
{
    const QString path = QLatin1String(name);
    StateReader::decode(objectOf(states.value(path), path), path, value);
}

// A list that grows at its end has a part for so many of its values, so that what is written at a time does
// not grow with it. Its last part is not full, if only for that.
constexpr qsizetype valuesOfPart = 16;

QString partOf(const char* list, qsizetype index)
{
    return QStringLiteral("%1.%2").arg(QLatin1String(list)).arg(index);
}

template <typename T>
void writeList(States& states, const char* list, const QList<T>& values, const States& writtenBefore,
    const QList<T>& before)
{
    for (qsizetype start = 0; start <= values.size(); start += valuesOfPart) {
        const QString name = partOf(list, start / valuesOfPart);
        const QList<T> some = values.mid(start, valuesOfPart);
        const bool isWritten = writtenBefore.contains(name) && some == before.mid(start, valuesOfPart);
        states[name] = isWritten ? writtenBefore.value(name) : compact(StateWriter::encoded(some));
    }
}

template <typename T>
void readList(const States& states, const char* list, QList<T>& values)
{
    for (QList<T> some(valuesOfPart); some.size() == valuesOfPart; values.append(some)) {
        const QString name = partOf(list, values.size() / valuesOfPart);
        some = valueOf<QList<T>>(states.value(name), name);
    }
}

QMap<QString, QString> namedParameters(const RegisterMemory& memory)
{
    QMap<QString, QString> named;
    for (auto value = memory.parameters.cbegin(); value != memory.parameters.cend(); ++value)
        named[QStringLiteral("%1.%2").arg(value.key().first).arg(value.key().second)] = value.value();
    return named;
}

void readParameters(const QMap<QString, QString>& named, RegisterMemory& memory)
{
    for (auto value = named.cbegin(); value != named.cend(); ++value) {
        bool isNumber = false;
        bool isRow = false;
        const int number = value.key().section(QLatin1Char('.'), 0, 0).toInt(&isNumber);
        const int row = value.key().section(QLatin1Char('.'), 1).toInt(&isRow);
        if (!isNumber || !isRow)
            StateReader::fail(QStringLiteral("parameters.") + value.key());
        memory.parameters[{number, row}] = value.value();
    }
}

} // namespace

Written written(const Identity& identity, const RegisterMemory& memory, const Written& before)
{
    const State& state = memory.state;
    const QMap<QString, QJsonValue> parts{
        {QStringLiteral("identity"), StateWriter::encoded(identity)},
        {QStringLiteral("clock"), StateWriter::encoded(memory.clockOffset)},
        {QStringLiteral("parameters"), StateWriter::encoded(namedParameters(memory))},
        {QStringLiteral("settings"), StateWriter::encoded(memory.settings)},
        {QStringLiteral("drive"), StateWriter::encoded(memory.drive)},
        {QStringLiteral("registration"), StateWriter::encoded(state.registration)},
        {QStringLiteral("shift"), StateWriter::encoded(state.shift)},
        {QStringLiteral("drawer"), StateWriter::encoded(state.drawer)},
        {QStringLiteral("open"), StateWriter::encoded(state.open)},
        {QStringLiteral("paper"), StateWriter::encoded(state.paper)},
        {QStringLiteral("marking"), StateWriter::encoded(state.marking)},
        {QStringLiteral("logo"), StateWriter::encoded(state.logo)},
    };
    States states;
    for (auto part = parts.cbegin(); part != parts.cend(); ++part)
        states[part.key()] = compact(part.value());
    const Document& document = state.open.document;
    const Document& documentBefore = before.memory.state.open.document;
    writeList(states, "positions", document.items, before.states, documentBefore.items);
    writeList(states, "body", document.body, before.states, documentBefore.body);
    return {memory, states};
}

Identity readIdentity(const States& states)
{
    Identity identity;
    read(states, "identity", identity);
    DriveMemory drive;
    read(states, "drive", drive);
    identity.driveNumber = drive.number;
    return identity;
}

RegisterMemory readMemory(const States& states)
{
    RegisterMemory memory;
    State& state = memory.state;
    memory.clockOffset = valueOf<qint64>(states.value(QStringLiteral("clock")), QStringLiteral("clock"));
    state.logo = valueOf<QByteArray>(states.value(QStringLiteral("logo")), QStringLiteral("logo"));
    QMap<QString, QString> parameters;
    read(states, "parameters", parameters);
    readParameters(parameters, memory);
    read(states, "settings", memory.settings);
    read(states, "drive", memory.drive);
    read(states, "registration", state.registration);
    read(states, "shift", state.shift);
    read(states, "drawer", state.drawer);
    read(states, "open", state.open);
    readList(states, "positions", state.open.document.items);
    readList(states, "body", state.open.document.body);
    read(states, "paper", state.paper);
    read(states, "marking", state.marking);
    return memory;
}

DocumentRow written(const StoredDocument& document)
{
    return {document.record.number, compact(StateWriter::encoded(document.record)), compact(document.entry),
        compact(StateWriter::encoded(document.page))};
}

StoredDocument readDocument(const DocumentRow& row)
{
    const QString name = QStringLiteral("document %1").arg(row.number);
    const QString pageName = name + QStringLiteral(".page");
    StoredDocument document;
    StateReader::decode(objectOf(row.record, name), name, document.record);
    document.entry = objectOf(row.entry, name + QStringLiteral(".entry"));
    StateReader::decode(objectOf(row.page, pageName), pageName, document.page);
    return document;
}

} // namespace emulator::registerstate
