#pragma once

#include <QString>

class QCommandLineParser;
struct Options;

/// The options of what the register is: its numbers, its fiscal drive, its paper and its clock.
namespace identityoptions {

void describe(QCommandLineParser& parser);
/// What is wrong with those that are numbers of the register; empty when all is well.
QString readNumbers(const QCommandLineParser& parser, Options& options);
/// The same of the others, and of what these numbers mean.
QString read(const QCommandLineParser& parser, Options& options);

} // namespace identityoptions
