// Requests to answers, without a line.
//
// Input: how the body comes in pieces, then the request as text: method, blank, target; headers, a line each;
// an empty line; the body.

#include "harness.h"

#include "http/eventstream.h"
#include "http/intake.h"
#include "http/site.h"

#include <QJsonDocument>

namespace {

using http::Access;
using http::Request;
using http::Response;

const QByteArray token = QByteArrayLiteral("token");

http::Limits limits()
{
    http::Limits limits;
    limits.body = 64;
    limits.bodies = 96;
    return limits;
}

/// Of a service, in small.
class Service
{
public:
    Service()
    {
        m_site.tokens.add(http::Tokens::hashOf(token), {QStringLiteral("till"), QStringLiteral("sell"), {}});
        m_site.gate.hostNames = QStringList{QStringLiteral("till.example")};
        m_site.gate.origins = QStringList{QStringLiteral("https://shop.example")};
        for (int count = 0; count < 5; ++count)
            m_events.publish("made", {});
        addRoutes();
    }

    const http::Site& site() const { return m_site; }

private:
    void addRoutes()
    {
        m_site.router.add("POST", QStringLiteral("/v1/{name}/documents"), [](const Request& request) {
            fuzz::require(request.caller.has_value(), "nobody knows who sells");
            fuzz::require(!request.parameter(QStringLiteral("name")).isEmpty(), "a part without a name");
            fuzz::require(
                request.preferredWait().value_or(std::chrono::seconds(0)).count() >= 0, "a wait below 0");
            return Response::json(request.json(), 201);
        });
        m_site.router.add(
            "DELETE", QStringLiteral("/v1/{name}"), [](const Request&) -> Response { std::abort(); },
            Access{false, {QStringLiteral("admin")}});
        m_site.router.add(
            "GET", QStringLiteral("/v1/events"),
            [this](const Request& request) { return m_events.subscribe(request); }, Access{true, {}});
        m_site.router.add("GET", QStringLiteral("/v1/wait"), [this](const Request& request) {
            const int time = request.queryNumber(QStringLiteral("timeout"), 0, 60).value_or(1);
            const QString after = request.queryValue(QStringLiteral("after")).value_or(QString());
            return m_events.wait({}, std::chrono::seconds(time), after.toUtf8());
        });
    }

    http::EventStream m_events{3, "run"};
    http::Site m_site;
};

Request headOf(const QByteArray& text)
{
    const QByteArrayList lines = text.split('\n');
    const qsizetype blank = lines.first().indexOf(' ');
    Request request = Request::of(lines.first().left(blank), lines.first().mid(blank + 1));
    for (const QByteArray& line : lines.mid(1)) {
        const qsizetype colon = line.indexOf(':');
        request.headers.add(line.left(colon), line.mid(colon + 1).trimmed());
    }
    return request;
}

void checkResponse(const Request& request, const Response& response)
{
    fuzz::require(response.status >= 200 && response.status < 500, "no status for a client");
    if (response.contentType() == "application/problem+json")
        fuzz::require(QJsonDocument::fromJson(response.body).object().value(QStringLiteral("status"))
                == response.status,
            "a problem of another status");
    const QByteArray host = request.headers.value("Host").toLower();
    fuzz::require(!host.startsWith("evil.example") || response.status >= 400, "a foreign name was served");
    fuzz::require(request.headers.value("Origin") != "https://evil.example" || response.status >= 400,
        "a foreign page was served");
}

void checkStream(http::Stream& stream)
{
    const QByteArray text = stream.take();
    fuzz::require(text.endsWith("\n\n") && text.startsWith("retry: "), "a stream that is torn");
    fuzz::require(stream.take().isEmpty(), "an event that comes twice");
}

void answer(const Request& request)
{
    static const Service service;
    const http::Answer answer = service.site().answer(request);
    if (const auto* response = std::get_if<Response>(&answer))
        checkResponse(request, *response);
    else if (const auto* stream = std::get_if<std::shared_ptr<http::Stream>>(&answer))
        checkStream(**stream);
    else
        std::get<std::shared_ptr<http::Pending>>(answer)->expire();
}

/// The body as it comes over a line, beside that of somebody else.
void receive(const Request& head, const QByteArray& body, qsizetype piece)
{
    static const http::Limits limits = ::limits();
    http::BodyRoom room(limits.bodies);
    http::Intake other(limits, room, head);
    http::Intake intake(limits, room, head);
    bool goesOn = true;
    for (qsizetype place = 0; goesOn && place < body.size(); place += piece) {
        const QByteArray part = body.mid(place, piece);
        goesOn = intake.add(part) && other.add(part);
        fuzz::require(room.taken() <= limits.bodies, "more bodies than there is room for");
    }
    fuzz::require(goesOn || body.size() > limits.body, "a body that fits was cut");
    if (!goesOn || intake.problem())
        return;
    const Request request = intake.take();
    fuzz::require(request.body == body, "another body");
    answer(request);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    fuzz::prepare();
    fuzz::Input input(data, size);
    const auto piece = static_cast<qsizetype>(input.take() % 64 + 1);
    const qsizetype end = input.rest().indexOf("\n\n");
    try {
        const Request head = headOf(input.rest().left(end));
        receive(head, end < 0 ? QByteArray() : input.rest().mid(end + 2), piece);
    } catch (const http::Problem& problem) {
        fuzz::require(problem.status() == 400, "a request that cannot be read is 400");
    }
    return 0;
}
