#include "api/metrics.h"

#include "api/api.h"
#include "currenttime.h"
#include "mockfactory.h"

namespace frserver {

namespace {

using sale::DocumentState;
using Labels = QList<std::pair<const char*, QString>>;

QByteArray quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    text.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    return '"' + text.toUtf8() + '"';
}

class Text
{
public:
    void describe(const char* name, const char* type, const char* help)
    {
        m_name = name;
        m_text += QByteArray("# HELP ") + name + ' ' + help + "\n# TYPE " + name + ' ' + type + '\n';
    }

    /// Of what was described last.
    void add(const Labels& labels, double value)
    {
        m_text += m_name;
        char sign = '{';
        for (const auto& [label, text] : labels) {
            m_text += sign + QByteArray(label) + '=' + quoted(text);
            sign = ',';
        }
        m_text += (labels.isEmpty() ? " " : "} ") + QByteArray::number(value, 'g', 15) + '\n';
    }

    const QByteArray& text() const { return m_text; }

private:
    QByteArray m_name;
    QByteArray m_text;
};

const char* const registerLabel = "register";

void addEndings(Text& text, const OpenList& open)
{
    text.describe(
        "frserver_documents_total", "counter", "Documents by what became of them, since the start.");
    for (const auto& [ending, count] : open.endings()) {
        const auto& [name, state, reason] = ending;
        text.add({{registerLabel, name}, {"state", state}, {"reason", reason}}, static_cast<double>(count));
    }
}

void addQueues(Text& text, const Api& api)
{
    text.describe("frserver_open_documents", "gauge", "Documents that wait, are made, or are unknown.");
    for (const auto& [name, till] : api.tills()) {
        for (const DocumentState state :
            {DocumentState::Queued, DocumentState::Running, DocumentState::Unknown})
            text.add({{registerLabel, name}, {"state", sale::stateName(state)}},
                api.openDocuments().count(name, state));
    }
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    text.describe("frserver_oldest_queued_seconds", "gauge", "How long the oldest document has waited.");
    for (const auto& [name, till] : api.tills()) {
        const QDateTime oldest = api.openDocuments().oldestQueued(name);
        text.add(
            {{registerLabel, name}}, oldest.isValid() ? static_cast<double>(oldest.msecsTo(now)) / 1000 : 0);
    }
}

void addStates(Text& text, const Api& api)
{
    text.describe(
        "frserver_register_state", "gauge", "1 for the state of the register, and what it waits for.");
    for (const auto& [name, till] : api.tills()) {
        const QJsonObject view = till->view();
        text.add({{registerLabel, name}, {"state", view.value(QStringLiteral("state")).toString()},
                     {"waiting", view.value(QStringLiteral("waiting")).toString()}},
            1);
    }
}

} // namespace

QByteArray metricsText(const Api& api)
{
    Text text;
    text.describe("frserver_info", "gauge", "The program.");
    text.add({{"version", QString::fromLatin1(api.settings().version)}}, 1);
    addEndings(text, api.openDocuments());
    addQueues(text, api);
    addStates(text, api);
    return text.text();
}

} // namespace frserver
