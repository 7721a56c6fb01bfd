#pragma once

namespace frserver {

/// How much of a fiscal drive is left to the documents that are posted to its register itself; 0 for nothing.
struct DrainLimit
{
    int days = 0;
    int documents = 0;
};

} // namespace frserver
