#pragma once

#include "trace/frame.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

#include <optional>

namespace trace {

/// What is known of a field of a HEX frame.
struct FieldRow
{
    /// Empty for one that means nothing or whose meaning is not known.
    QString name;
    /// A text in UTF-8 where all others are CP866.
    bool isUtf8 = false;
    /// It tells a person, a customer, a password, or whatever people write, and has to be masked.
    bool isPersonal = false;
    /// A clock's time, which is another one in each run.
    bool isTime = false;
};

/// A command of either protocol.
struct CommandRow
{
    QString name;
    /// It changes nothing: hosts ask it whenever they like.
    bool isQuestion = false;
    /// Over HEX.
    QList<FieldRow> requestFields;
    QList<FieldRow> answerFields;
};

/// A command over HEX, or one of its questions.
struct HexCommandRow
{
    /// Two digits.
    QByteArray code;
    /// First field of the request that the row is for; nothing for any.
    std::optional<QByteArray> question;
    CommandRow command;
};

namespace commandtable {

/// The first row that fits a request is its own.
const QList<HexCommandRow>& hexCommands();
/// By number.
const QMap<int, CommandRow>& xmlCommands();
/// What the answer codes of HEX frames mean, in the register's words.
const QMap<int, QString>& hexErrors();

/// By the two digits of the frame and its first field, which with some is the number of a question. Null for
/// a code that no command has.
const CommandRow* hexCommand(const QByteArray& code, const QByteArray& firstField);
/// What is known of each of so many fields of a frame of that command, or of none that is known.
QList<FieldRow> hexFields(const CommandRow* command, Direction direction, qsizetype count);
/// By the number in the document.
const CommandRow* xmlCommand(int number);
/// Empty for a code that is not known.
QString hexErrorText(int code);

} // namespace commandtable

} // namespace trace
