#pragma once

#include "api/pictureorder.h"
#include "http/answer.h"

namespace frserver {

/// Draws receipts. A picture that hangs or crashes takes nothing else with it.
class Painter
{
public:
    Painter() = default;
    virtual ~Painter() = default;
    Painter(const Painter&) = delete;
    Painter& operator=(const Painter&) = delete;

    virtual http::Answer paint(const PictureOrder& order) = 0;
};

} // namespace frserver
