#pragma once

#include <QString>
#include <QStringList>

class QCommandLineParser;
struct Options;

/// The options of the control interface and of several registers.
namespace paneloptions {

void describe(QCommandLineParser& parser);
/// What is wrong with them; empty when all is well.
QString read(const QCommandLineParser& parser, Options& options);
/// With the port of --panel where it stands without one.
QStringList withPort(const QStringList& arguments);
/// One of several registers, counted from 1, has a line, files, a state and numbers of its own.
Options forRegister(const Options& options, int number);

} // namespace paneloptions
