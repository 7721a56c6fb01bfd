#pragma once

namespace frserver {

/// The program with --preview; a QCoreApplication stands. Draws one receipt: reads {"receipt", "protocol",
/// "time", "cashier", "cashierInn", "format", "plugins", "drawing"} from the standard input, writes the
/// picture to the standard output; the exit status is a PreviewStatus.
int runPreview();

} // namespace frserver
