#include "jsontext.h"

#include "parserwords.h"
#include "receipterror.h"
#include "receipttr.h"
#include "textencoding.h"

#include <QJsonDocument>
#include <QList>
#include <QRegularExpression>
#include <QSet>
#include <QString>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace receipt {

namespace {

using Json = nlohmann::json;

constexpr qsizetype deepest = 32;

/// The parser's words, but for texts: it would have control characters escaped, which the register cannot
/// take either.
QString reasonOf(const nlohmann::detail::exception& error)
{
    static const QRegularExpression control(QStringLiteral("control character (U\\+[0-9A-F]{4})"));
    // "[json.exception...] parse error at line 1, column 5: syntax error ...; last read: ..."
    const QString reason = QString::fromUtf8(error.what()).section(QStringLiteral("] "), 1);
    if (const QString found = control.match(reason).captured(1); !found.isEmpty())
        return tr("has the control character %1").arg(found);
    if (reason.contains(QStringLiteral(" surrogate ")))
        return tr("has half of a character");
    return parserWords(reason.startsWith(QLatin1String("parse error at"))
            ? reason.section(QStringLiteral(": "), 1)
            : reason);
}

/// Walks through a text and complains of what Qt's parser takes silently: of a key that stands in one object
/// twice it would keep the last value.
class StrictWalk : public nlohmann::json_sax<Json>
{
public:
    explicit StrictWalk(const QByteArray& text)
        : m_text(text)
    {
    }

    bool null() override { return meetValue(); }
    bool boolean(bool) override { return meetValue(); }
    bool number_integer(number_integer_t) override { return meetValue(); }
    bool number_unsigned(number_unsigned_t) override { return meetValue(); }
    bool number_float(number_float_t value, const string_t& text) override
    {
        meetValue();
        // Qt's parser takes it for no number.
        const auto mantissaEnd = std::min(text.find_first_of("eE"), text.size());
        if (std::fpclassify(value) == FP_ZERO && text.find_first_of("123456789") < mantissaEnd)
            note(tr("%1 is nearer to zero than any number can be").arg(text.c_str()));
        return true;
    }
    bool string(string_t&) override { return meetValue(); }
    bool binary(binary_t&) override { return meetValue(); }
    bool start_object(std::size_t) override { return enter(false); }
    bool end_object() override { return leave(); }
    bool start_array(std::size_t) override { return enter(true); }
    bool end_array() override { return leave(); }

    bool key(string_t& name) override
    {
        Level& level = m_levels.last();
        level.key = QString::fromStdString(name);
        if (level.keys.contains(level.key))
            note(tr("stands there twice"));
        level.keys.insert(level.key);
        return true;
    }

    bool parse_error(
        std::size_t position, const std::string&, const nlohmann::detail::exception& error) override
    {
        const qsizetype line = m_text.left(static_cast<qsizetype>(position)).count('\n') + 1;
        throw ReceiptError(path(), tr("line %1: %2").arg(line).arg(reasonOf(error)));
    }

    const QList<ReceiptError>& errors() const { return m_errors; }

private:
    struct Level
    {
        bool isArray = false;
        int index = -1;
        QString key;
        QSet<QString> keys;
    };

    void note(const QString& reason)
    {
        if (m_errors.size() < mostErrors)
            m_errors.append(ReceiptError(path(), reason));
    }

    bool meetValue()
    {
        if (!m_levels.isEmpty())
            ++m_levels.last().index;
        return true;
    }

    bool enter(bool isArray)
    {
        meetValue();
        if (m_levels.size() == deepest)
            throw ReceiptError({}, tr("is nested deeper than any receipt"));
        m_levels.append({isArray, -1, {}, {}});
        return true;
    }

    bool leave()
    {
        m_levels.removeLast();
        return true;
    }

    QString path() const
    {
        QString result;
        for (const Level& level : m_levels) {
            if (level.isArray)
                result += QStringLiteral("[%1]").arg(qMax(0, level.index));
            else if (!level.key.isEmpty())
                result += (result.isEmpty() ? QString() : QStringLiteral(".")) + level.key;
        }
        return result;
    }

    const QByteArray m_text;
    QList<Level> m_levels;
    QList<ReceiptError> m_errors;
};

} // namespace

QJsonObject jsonFromText(const QByteArray& bytes)
{
    QList<ReceiptError> errors;
    const QJsonObject json = jsonFromText(bytes, errors);
    if (!errors.isEmpty())
        throw ReceiptError(errors);
    return json;
}

QJsonObject jsonFromText(const QByteArray& bytes, QList<ReceiptError>& errors)
{
    if (const auto fault = utf8Fault(bytes))
        throw ReceiptError({}, tr("the text %1").arg(*fault));
    const QByteArray text = withoutByteOrderMark(bytes);
    StrictWalk walk(text);
    Json::sax_parse(text.cbegin(), text.cend(), &walk);
    errors += walk.errors();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    // Which of the numbers it is, the walk has told.
    if (error.error != QJsonParseError::NoError)
        throw walk.errors().isEmpty() ? ReceiptError({}, error.errorString()) : ReceiptError(walk.errors());
    if (!document.isObject())
        throw ReceiptError({}, tr("a receipt is a JSON object"));
    return document.object();
}

} // namespace receipt
