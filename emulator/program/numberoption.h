#pragma once

#include <QString>

class QCommandLineParser;

/// The number of an option, where it was given. What is wrong with it; empty when all is well.
QString readNumber(const QCommandLineParser& parser, const char* name, int least, int most, int& value);
