#include "http/problem.h"
#include "panel/desk.h"
#include "panel/deskroute.h"
#include "panel/members.h"
#include "panel/stateview.h"

namespace emulator::panel {

namespace {

using http::Answer;
using http::Request;
using http::Response;

using View = QJsonObject (*)(const Desk&);

template <View Look>
Answer get(Desk& desk, const Request&)
{
    return Response::json(Look(desk));
}

/// Keeps and tells of what was changed, and answers how it is now.
Answer done(Desk& desk, const char* part, View view)
{
    desk.changed(QLatin1String(part));
    return Response::json(view(desk));
}

Answer setPaper(Desk& desk, const Request& request)
{
    constexpr int usualRest = 3;
    constexpr int longestRest = 100'000;
    Members members(request.json());
    const QString state = members.word(
        QStringLiteral("state"), {QStringLiteral("in"), QStringLiteral("nearEnd"), QStringLiteral("out")});
    const QString linesName = QStringLiteral("linesLeft");
    const QString quietName = QStringLiteral("quietly");
    const bool isNearEnd = state == QStringLiteral("nearEnd");
    const auto lines
        = isNearEnd && members.has(linesName) ? members.number(linesName, 0, longestRest) : usualRest;
    const bool quietly = isNearEnd && members.has(quietName) && members.flag(quietName);
    members.finish();
    Register& device = desk.device();
    // Taking it out and putting it in again is a new roll; one that is near its end is shortened.
    if (!isNearEnd || !device.hasPaper())
        device.setPaper(state != QStringLiteral("out"));
    if (isNearEnd)
        device.setPaperLeft(static_cast<int>(lines), quietly);
    return done(desk, "paper", stateview::paper);
}

bool openOf(const Request& request)
{
    Members members(request.json());
    const bool isOpen = members.flag(QStringLiteral("open"));
    members.finish();
    return isOpen;
}

Answer setDrawer(Desk& desk, const Request& request)
{
    desk.device().setDrawer(openOf(request));
    return done(desk, "drawer", stateview::drawer);
}

Answer setCover(Desk& desk, const Request& request)
{
    desk.device().setCover(openOf(request));
    return done(desk, "cover", stateview::cover);
}

const QString powerName = QStringLiteral("state");
const QString offAtName = QStringLiteral("offAt");

/// No value takes back one that is to come.
std::optional<PowerCut> powerCutOf(Members& members)
{
    if (members.isNull(offAtName))
        return std::nullopt;
    const QString after = QStringLiteral("afterStoring");
    const QString when = members.word(offAtName, {QStringLiteral("beforeStoring"), after});
    return when == after ? PowerCut::AfterStoring : PowerCut::BeforeStoring;
}

Answer setPowerCut(Desk& desk, Members& members)
{
    const std::optional<PowerCut> cut = powerCutOf(members);
    members.finish();
    if (cut && !desk.device().isPowered())
        throw http::Problem(
            409, QStringLiteral("The power is off: no request comes with which it could go."));
    desk.faults().setPowerCut(cut);
    return done(desk, "power", stateview::power);
}

Answer setPower(Desk& desk, const Request& request)
{
    Members members(request.json());
    const bool hasState = members.has(powerName);
    if (members.has(offAtName) && hasState)
        members.fail(offAtName, QStringLiteral("and state do not go together"));
    if (members.has(offAtName))
        return setPowerCut(desk, members);
    members.finish();
    if (!hasState)
        members.fail(powerName, QStringLiteral("or offAt is missing"));
    const QString on = QStringLiteral("on");
    const bool isOn = members.word(powerName, {on, QStringLiteral("off")}) == on;
    desk.faults().setPowerCut(std::nullopt);
    // It is on already: a host need not start it anew.
    if (isOn != desk.device().isPowered())
        desk.setPower(isOn);
    return done(desk, "power", stateview::power);
}

Answer setOperator(Desk& desk, const Request& request)
{
    Members members(request.json());
    const bool isReachable = members.flag(QStringLiteral("reachable"));
    members.finish();
    desk.device().setOperatorReachable(isReachable);
    return done(desk, "ofd", stateview::operatorLink);
}

void moveClock(Desk& desk, const QDateTime& time)
{
    if (!Register::isClockTime(time))
        throw http::Problem(400,
            QStringLiteral(
                "The time is in the year %1; the register's clock has the years 2000 to 2099, of which the line tells two digits.")
                .arg(time.date().year()));
    if (!desk.device().setClock(time))
        throw http::Problem(
            409, QStringLiteral("The time is before that of the last document of the fiscal drive."));
}

Answer setClock(Desk& desk, const Request& request)
{
    constexpr double greatestSpeed = 100'000;
    const QString timeName = QStringLiteral("time");
    const QString speedName = QStringLiteral("speed");
    Members members(request.json());
    const std::optional<QString> text = members.optionalText(timeName);
    const QDateTime time
        = QDateTime::fromString(text.value_or(QString()), QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
    if (text && !time.isValid())
        members.fail(timeName, QStringLiteral("is a time such as 2026-03-01T09:00:00"));
    const double speed
        = members.has(speedName) ? members.fraction(speedName, 0, greatestSpeed) : desk.device().clockSpeed();
    members.finish();
    if (!text && !members.has(speedName))
        members.fail(timeName, QStringLiteral("or speed is missing"));
    if (text)
        moveClock(desk, time);
    desk.device().setClockSpeed(speed);
    return done(desk, "clock", stateview::clock);
}

Answer jumpClock(Desk& desk, const Request& request)
{
    constexpr qint64 hundredYears = 3'153'600'000;
    Members members(request.json());
    const qint64 seconds = members.number(QStringLiteral("seconds"), -hundredYears, hundredYears);
    members.finish();
    moveClock(desk, desk.device().now().addSecs(seconds));
    return done(desk, "clock", stateview::clock);
}

} // namespace

const QList<DeskRoute>& switchRoutes()
{
    static const QList<DeskRoute> routes{
        {"GET", "/paper", get<stateview::paper>},
        {"PUT", "/paper", setPaper},
        {"GET", "/drawer", get<stateview::drawer>},
        {"PUT", "/drawer", setDrawer},
        {"GET", "/cover", get<stateview::cover>},
        {"PUT", "/cover", setCover},
        {"GET", "/power", get<stateview::power>},
        {"PUT", "/power", setPower},
        {"GET", "/ofd", get<stateview::operatorLink>},
        {"PUT", "/ofd", setOperator},
        {"GET", "/clock", get<stateview::clock>},
        {"PUT", "/clock", setClock},
        {"POST", "/clock/jump", jumpClock},
    };
    return routes;
}

} // namespace emulator::panel
