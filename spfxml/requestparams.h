#pragma once

#include "efrdriver.h"

#include <QList>
#include <QString>
#include <QVariant>

class QDomDocument;
class QDomElement;

namespace spfxml {

/// Parameters of a request or an answer: a tree of named, typed values, written as "pa" elements with the
/// attributes n (name) and t (type). A value type; copies are copies of the tree.
class RequestParams
{
public:
    /// How the register expects the value to be written. The numbers travel in the attribute t.
    enum class EParamType : int {
        None = 0,
        Text = 1,
        /// Roubles, 2 decimals.
        Sum = 2,
        /// 3 decimals.
        Quantity = 3,
        Integer = 4,
        DateTime = 5,
        /// A container whose children are structures that repeat one name.
        StructureList = 6,
        /// A container.
        Structure = 7,
        DateTimeMs = 8,
        /// The low 8 bits, as 0x and two digits.
        Byte = 9
    };

    /// No parameters at all.
    RequestParams() = default;
    RequestParams(EParamType type, const QString& name, const QVariant& value);
    /// A leaf that is named by the number of the requisite.
    RequestParams(EParamType type, EFrDriver::RequisiteTypes requisite, const QVariant& value);
    RequestParams(EParamType type, const QString& name, const QList<RequestParams>& params);
    /// A container that is named by the number of the requisite.
    RequestParams(EParamType type, EFrDriver::RequisiteTypes requisite, const QList<RequestParams>& params);

    EParamType getType() const { return m_type; }
    QString getName() const { return m_name; }
    /// Null in a container. What was read from an answer is always a text; convert it by QVariant.
    QVariant getValue() const { return m_value; }
    QList<RequestParams> getParams() const { return m_params; }

    /// The value as it is written, by the type.
    QString getFormattedValue() const;
    /// The element belongs to the document but is not attached to it.
    QDomElement toElement(QDomDocument& document) const;
    /// The tree as XML without declaration; empty when there is neither a value nor a child.
    QString toString() const;
    /// Reads a tree back. A child is a leaf when it begins with text or CDATA; only children are read, so the
    /// text of the element itself is dropped.
    static RequestParams fromElement(const QDomElement& element);

private:
    template <typename Writer>
    void write(Writer& writer) const;

    EParamType m_type = EParamType::None;
    QString m_name;
    QVariant m_value;
    QList<RequestParams> m_params;
};

} // namespace spfxml

// Lists of receipts grow by moving their memory.
Q_DECLARE_TYPEINFO(spfxml::RequestParams, Q_RELOCATABLE_TYPE);
