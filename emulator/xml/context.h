#pragma once

namespace emulator {

class Register;
class XmlSettings;

/// What the commands of the XML protocol work on.
struct XmlContext
{
    Register& device;
    XmlSettings& settings;
};

} // namespace emulator
