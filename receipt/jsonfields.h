#pragma once

#include "namedvalue.h"
#include "plaintext.h"
#include "receipterror.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QSet>
#include <QString>

#include <functional>
#include <optional>
#include <span>

namespace receipt {

/// The fields of one JSON object on their way into a receipt. Each is asked for by name; what is wrong with
/// it is noted with its path, and the field reads as nothing: an empty text, false, 0, noChoice. finish()
/// complains of fields that nobody asked for, since a misspelt name must not drop a discount or a marking
/// code.
class JsonFields
{
public:
    /// What a coded field reads as that has no such code.
    static constexpr int noChoice = -1;

    /// What is wrong is appended to the errors, which must outlive the fields.
    JsonFields(const QJsonObject& object, const QString& path, QList<ReceiptError>& errors);

    bool has(const QString& name) const { return m_object.contains(name); }
    bool isNumber(const QString& name) const { return m_object.value(name).isDouble(); }
    /// A text as it stands there, not judged; empty for what is none.
    QString given(const QString& name) const { return m_object.value(name).toString(); }
    bool isObject(const QString& name) const { return m_object.value(name).isObject(); }
    /// Path of the field for messages; of the object itself for an empty name.
    QString path(const QString& name) const;
    /// Notes the path of the field and, when it is a text, a number or a flag, what stands there.
    void fail(const QString& name, const QString& reason) const;
    /// How much was wrong so far, here and in all that was read before: what stays the same while some fields
    /// are read says that they can be reckoned with.
    qsizetype errorCount() const { return m_errors.size(); }
    /// For an object of a kind that nobody knows: its fields are not complained of.
    void takeAll();

    /// A text that is there, is not blank, has no more than that many characters and no control characters.
    QString text(const QString& name, int maxLength = 256, TextKind kind = TextKind::Line);
    /// The same of a code as it was scanned, which may have group separators.
    QString scannedText(const QString& name, int maxLength)
    {
        return text(name, maxLength, TextKind::MarkingCode);
    }
    std::optional<QString> optionalText(const QString& name, int maxLength = 256);
    bool flag(const QString& name, bool otherwise);
    int integer(const QString& name, int least, int most);
    /// A tax number: 10 digits of a company or 12 of a person.
    std::optional<QString> optionalInn(const QString& name);
    /// A sum that is not negative, in kopecks.
    qint64 kopecks(const QString& name);
    /// A quantity above zero, in thousandths.
    qint64 thousandths(const QString& name);
    /// What one of the names stands for.
    int word(const QString& name, std::span<const NamedValue> values);
    /// A coded field: one of the names, or one of the numbers that they stand for.
    int choice(const QString& name, std::span<const NamedValue> values);
    /// The same with any number of the range: a code that has no name yet.
    int choice(const QString& name, std::span<const NamedValue> values, int least, int most);
    /// The codes of an array of names and numbers, which must not be empty.
    QList<int> choices(const QString& name, std::span<const NamedValue> values);

    /// Hands the fields of the nested object on and checks that all of them were asked for.
    void object(const QString& name, const std::function<void(JsonFields&)>& read);
    /// The same for each object of an array, which must not be empty.
    void objects(const QString& name, const std::function<void(JsonFields&)>& read);
    /// The texts of an array, which must not be empty; each is checked like a single one.
    QList<QString> texts(const QString& name, int maxLength);
    void finish() const;

private:
    void note(const ReceiptError& error) const;
    QJsonValue take(const QString& name);
    JsonFields nested(const QJsonObject& object, const QString& path) const
    {
        return {object, path, m_errors};
    }
    /// Reads each value of an array, which must not be empty, as a field "name[0]" and on.
    template <typename Element, typename Read>
    QList<Element> elements(const QString& name, const QString& kind, const Read& read);
    /// Nothing for a field that is not there or of another type.
    std::optional<QJsonValue> require(const QString& name, QJsonValue::Type type, const QString& kind);
    /// The objects or values of an array, none when there is something wrong with it.
    QJsonArray array(const QString& name, const QString& kind);
    /// In whole 10^-decimals. Below the least it is said to be so.
    qint64 fixed(const QString& name, int decimals, double largest, qint64 least, const QString& tooSmall);

    QJsonObject m_object;
    QString m_path;
    QSet<QString> m_taken;
    QList<ReceiptError>& m_errors;
};

} // namespace receipt
