#pragma once

/// The host's program ends here. None of the exceptions that anybody may take for a failure.
struct HostKilled
{
};
