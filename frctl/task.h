#pragma once

#include "output.h"

#include <functional>

class AbstractFrDriver;

namespace hw {
class AbstractRegisterParameters;
}

namespace sale {
class CashDesk;
}

namespace frctl {

/// A command with its arguments checked and its files read. Until one of the functions runs, nothing has
/// been sent to a register.
struct Task
{
    /// For commands that need no register.
    std::function<Output()> alone;
    /// One of these asks ports all the same, and traces them.
    bool isTraced = false;
    /// For commands that make a document: without a journal that can be written they do nothing.
    std::function<Output(sale::CashDesk&)> onDesk;
    /// For the others.
    std::function<Output(AbstractFrDriver&)> onRegister;
    /// For those that want the register's parameters as data.
    std::function<Output(AbstractFrDriver&, hw::AbstractRegisterParameters&)> onParameters;
    /// False for commands that look at a document which init would clean up.
    bool withInit = true;
};

/// The task of a command that needs no register.
Task alone(const std::function<Output()>& run);
/// The task of a command that needs a register and nothing else.
Task onRegister(const std::function<Output(AbstractFrDriver&)>& run);
/// The task of one that makes a document.
Task onDesk(const std::function<Output(sale::CashDesk&)>& run);

} // namespace frctl
