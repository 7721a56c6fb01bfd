#pragma once

#include <QString>

class QCommandLineParser;
struct Options;

/// The options of what the register is: its numbers, its fiscal drive, its paper and its clock.
namespace identityoptions {

void describe(QCommandLineParser& parser);
/// What is wrong with them; empty when all is well.
QString read(const QCommandLineParser& parser, Options& options);

} // namespace identityoptions
