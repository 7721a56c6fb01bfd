#include "findingoutput.h"

#include <QJsonObject>

namespace frctl {

namespace {

QString shown(QChar character)
{
    if (character == QChar(0x1D))
        return QStringLiteral("<GS>");
    return QStringLiteral("<%1>").arg(character.unicode(), 2, 16, QLatin1Char('0')).toUpper();
}

} // namespace

QString findingLine(const receipt::Finding& finding)
{
    return shownText(finding.text());
}

QJsonArray findingsJson(const QList<receipt::Finding>& findings)
{
    QJsonArray json;
    for (const receipt::Finding& finding : findings)
        json.append(QJsonObject{{QStringLiteral("path"), finding.path},
            {QStringLiteral("given"), finding.given}, {QStringLiteral("text"), finding.reason}});
    return json;
}

QString shownText(const QString& text)
{
    QString result;
    for (const QChar character : text) {
        // The controls of ISO 8859 too: a terminal may take them for the start of a sequence.
        const bool isControl = character.category() == QChar::Other_Control;
        result += isControl ? shown(character) : QString(character);
    }
    return result;
}

} // namespace frctl
