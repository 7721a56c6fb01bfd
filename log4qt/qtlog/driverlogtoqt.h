#pragma once

/// For programs that show the drivers' log or test it: from now on the lines of all drivers of the process
/// are in Qt's logging categories, with the same names, types and texts whichever Log4Qt the drivers have;
/// see QtLogCategories. With the real one an appender of the logger "frdriver" writes them there, and that
/// logger's level becomes trace: the categories decide what is shown. To be called once the application
/// object stands, since Log4Qt looks for its settings beside it; further calls change nothing.
void driverLogToQt();
