#pragma once

#include "fruser.h"
#include "output.h"

#include <functional>
#include <optional>

class AbstractFrDriver;

namespace hw {
class AbstractRegisterParameters;
}

namespace frctl {

/// A command with its arguments checked and its files read. Until one of the functions runs, nothing has
/// been sent to a register.
struct Task
{
    /// For commands that need no register.
    std::function<Output()> alone;
    /// For the others.
    std::function<Output(AbstractFrDriver&)> onRegister;
    /// For those that want the register's parameters as data.
    std::function<Output(AbstractFrDriver&, hw::AbstractRegisterParameters&)> onParameters;
    /// True for commands that make a document: without a journal that can be written they do nothing.
    bool makesDocument = false;
    /// False for commands that look at a document which init would clean up.
    bool withInit = true;
    /// The cashier of the document, when it is not simply that of the command line.
    std::optional<FrUser> cashier;
};

/// The task of a command that needs a register and nothing else.
Task onRegister(const std::function<Output(AbstractFrDriver&)>& run);
/// The same for one that makes a document.
Task documentOnRegister(const std::function<Output(AbstractFrDriver&)>& run);

} // namespace frctl
