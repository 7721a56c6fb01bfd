#pragma once

#include "panel/panel.h"
#include "rig.h"
#include "xmlrig.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// An answer as a client has it.
struct Served
{
    int status = 0;
    QByteArray type;
    QByteArray body;

    QJsonObject json() const { return QJsonDocument::fromJson(body).object(); }
    std::string text() const { return QByteArray::number(status).append(' ').append(body).toStdString(); }
};

/// A register on the panel, with a host of one of the protocols.
template <typename Host>
class PanelRig : public Host
{
public:
    PanelRig()
        : desk(panel.add(this->device, watch, faults))
    {
        protocolLine().setFaultSource(&faults);
        protocolLine().setWatcher([this](const emulator::Exchange& exchange) {
            watch.note(exchange);
            desk.noted(exchange);
        });
        this->device.journal().setListener([this](const QJsonObject& entry) {
            watch.store(entry);
            desk.stored(entry);
        });
        this->device.tape().setListener(
            [this](const tape::Page& page, quint32 document) { desk.printed(page, document); });
        desk.setHands({[] { return true; }, [this] { protocolLine().forget(); }});
    }

    /// As over the line of the program.
    QByteArray pass(const QByteArray& request)
    {
        desk.passed(trace::Direction::ToRegister, request);
        protocolLine().receive(request);
        const QByteArray answer = this->outbox.take();
        desk.passed(trace::Direction::ToHost, answer);
        desk.settle();
        return answer;
    }

    Served ask(const QByteArray& method, const QByteArray& target, const QByteArray& body = {},
        const QByteArray& host = "127.0.0.1")
    {
        http::Request request = http::Request::of(method, target);
        request.headers.add("Host", host);
        request.body = body;
        http::Answer answer = panel.site().answer(request);
        if (const auto* const pending = std::get_if<std::shared_ptr<http::Pending>>(&answer))
            answer = awaited(**pending);
        if (const auto* const stream = std::get_if<std::shared_ptr<http::Stream>>(&answer))
            return {200, (*stream)->contentType(), (*stream)->take()};
        const auto& response = std::get<http::Response>(answer);
        return {response.status, response.contentType(), response.body};
    }

    emulator::panel::Panel panel;
    emulator::HostWatch watch{this->device};
    emulator::panel::FaultDesk faults;
    emulator::panel::Desk& desk;

private:
    auto& protocolLine()
    {
        if constexpr (std::is_same_v<Host, Rig>)
            return this->protocol;
        else
            return this->Host::line;
    }
    static http::Response awaited(http::Pending& pending)
    {
        if (pending.timeout().count() == 0)
            pending.expire();
        while (!pending.isOver())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return pending.response().value_or(http::Response::empty());
    }
};

using HexPanel = PanelRig<Rig>;
using XmlPanel = PanelRig<XmlRig>;

inline int code(HexPanel& rig, const Step& step)
{
    return rig.parse(rig.pass(rig.frame(step))).code;
}

inline void passAll(HexPanel& rig, const QList<Step>& steps)
{
    for (const Step& step : steps)
        EXPECT_EQ(code(rig, step), 0) << step.code;
}

inline const Step started{0x00, {"010324", "090000"}};

/// Document 1 is the registration, 2 the opening.
inline void openShift(HexPanel& rig)
{
    passAll(rig, {started, {0x6B, {"Иванова", "771234567890"}}});
}

/// Of each print on the tape, 0 for none.
template <typename Host>
QList<int> documentsOfTape(PanelRig<Host>& rig)
{
    QList<int> documents;
    for (const QJsonValue entry : rig.ask("GET", "/v1/tape").json().value("entries").toArray())
        documents.append(entry["document"].toInt());
    return documents;
}
