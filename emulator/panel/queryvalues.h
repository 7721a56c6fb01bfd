#pragma once

#include <QStringList>

#include <optional>

namespace http {
struct Request;
}

/// What stands in a query. Everything that is not as it must be is an http::Problem (400) that names it and
/// tells what is taken.
namespace emulator::panel::queryvalues {

/// Each of these names once at the most, and nothing else: a misspelt filter would let everything through.
void checkNames(const http::Request& request, const QStringList& known);
bool flag(const http::Request& request, const QString& name);
/// One of these.
std::optional<QString> word(const http::Request& request, const QString& name, const QStringList& words);
/// Some of these, with commas between them; none without the name.
QStringList someWords(const http::Request& request, const QString& name, const QStringList& words);

} // namespace emulator::panel::queryvalues
