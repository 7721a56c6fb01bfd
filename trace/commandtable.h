#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace trace {

/// What is known of a field of a HEX frame.
struct FieldRow
{
    /// Empty for one that means nothing or whose meaning is not known.
    QString name;
    /// A text in UTF-8 where all others are CP866.
    bool isUtf8 = false;
    /// It tells a person, a customer or a password, and has to be masked.
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

namespace commandtable {

/// By the two digits of the frame and its first field, which with some is the number of a question. Null for
/// a code that no command has.
const CommandRow* hexCommand(const QByteArray& code, const QByteArray& firstField);
/// By the number in the document.
const CommandRow* xmlCommand(int number);
/// What the answer code of a HEX frame means, in the register's words.
QString hexErrorText(int code);

} // namespace commandtable

} // namespace trace
