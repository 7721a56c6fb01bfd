#include "answererror.h"

namespace sale {

QJsonObject AnswerError::toJson(const std::optional<DocumentState>& state) const
{
    QJsonObject json = details;
    json.insert(QStringLiteral("kind"), errorKindName(kind));
    json.insert(QStringLiteral("text"), text);
    json.insert(QStringLiteral("action"), action.isEmpty() ? errorAction(kind, state) : action);
    json.insert(QStringLiteral("exception"), exceptionName);
    return json;
}

AnswerError AnswerError::fromJson(const QJsonObject& json)
{
    const auto text = [&json](const char* name) { return json.value(QLatin1String(name)).toString(); };
    return {.kind = errorKindNamed(text("kind")), .text = text("text"), .exceptionName = text("exception")};
}

} // namespace sale
