#pragma once

#include "trace/frame.h"

#include <QHash>
#include <QJsonObject>

#include <optional>

namespace trace {

/// A frame in words.
struct Meaning
{
    enum class Kind { Request, Answer, Enquiry, Acknowledge, Picture, Echo, Unknown };

    struct Field
    {
        /// Empty for one that has no name; over XML the path within the data.
        QString name;
        QString value;
        /// Over XML.
        QString type;
        bool isTime = false;
        /// A trace that is masked has a stand-in for it.
        bool isPersonal = false;

        bool operator==(const Field&) const = default;
    };

    Kind kind = Kind::Unknown;
    /// HEX or XML; empty for what is of neither.
    QString protocol;
    /// Of the packet or the request.
    QString id;
    /// As the protocol writes it.
    QString code;
    /// Empty for a code that no command has.
    QString name;
    bool isQuestion = false;
    QList<Field> fields;
    /// Label and versions of an XML document.
    QString envelope;
    /// Of an answer that refuses: code and, as far as there is one, text.
    QString error;
    /// What is wrong with the frame itself.
    QString fault;
    /// Microseconds since the request that it answers.
    std::optional<qint64> taken;

    bool isRequest() const { return kind == Kind::Request || kind == Kind::Picture; }
    bool isSign() const { return kind == Kind::Enquiry || kind == Kind::Acknowledge; }
    /// Says the same, whatever id it has and what time it is.
    bool isLike(const Meaning& other) const;
    /// In a few words: command and result without the fields.
    QString title() const;
    /// All of it on one line.
    QString text() const;
    /// The fields that say something, each as name=value.
    QStringList fieldTexts() const;
    /// How it differs from what was expected, a line a field; empty when it is like it.
    QStringList differencesFrom(const Meaning& expected) const;
    /// Without what a mask hides: a trace with stand-ins means any value there. Over XML a host leaves out
    /// what it has not, so that such fields are gone; over HEX they are empty.
    Meaning withoutPeople() const;
    QJsonObject json() const;
};

/// Reads frames in the order in which they went over the line, since an answer may be understood by its
/// request alone.
class Decoder
{
public:
    Meaning decode(const Frame& frame);

private:
    struct Asked
    {
        QByteArray firstField;
        qint64 microseconds = 0;
    };

    Meaning decodeHex(const Frame& frame);
    /// The line gave the last request back.
    Meaning decodeEcho(Frame frame);
    Meaning decodeXml(const Frame& frame);
    /// The last request of that id.
    std::optional<Asked> asked(const QString& id) const;

    QHash<QString, Asked> m_asked;
    QByteArray m_lastRequest;
};

} // namespace trace
