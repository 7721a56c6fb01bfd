#pragma once

#include "http/eventstream.h"
#include "http/site.h"
#include "panel/desk.h"

#include <memory>
#include <vector>

namespace emulator::panel {

/// The control interface over all registers of a program, and the page that shows it, as a site.
class Panel
{
public:
    Panel();
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    /// The next register. All of them live as long as the panel.
    Desk& add(Register& device, HostWatch& watch, FaultDesk& faults);
    http::Site& site() { return m_site; }
    const http::Site& site() const { return m_site; }
    http::EventStream& events() { return m_events; }

private:
    Desk& deskOf(const http::Request& request) const;
    void addRoutes();

    http::Site m_site;
    http::EventStream m_events;
    std::vector<std::unique_ptr<Desk>> m_desks;
};

} // namespace emulator::panel
