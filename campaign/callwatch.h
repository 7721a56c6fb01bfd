#pragma once

#include <functional>

/// Runs one call of a driver from outside, named as in the contract, and looks at what it did.
using CallWatch = std::function<void(const char* name, const std::function<void()>& work)>;
