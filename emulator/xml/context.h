#pragma once

namespace emulator {

class Register;
class XmlSettings;

/// What the commands of the XML protocol work on.
struct XmlContext
{
    Register& device;
    XmlSettings& settings;
    /// The rules that a lenient register does not mind are in force.
    bool strict = true;
};

} // namespace emulator
