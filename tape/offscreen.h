#pragma once

#include <QGuiApplication>

#include <memory>

namespace tape {

/// The application of a program that draws pages and has no screen: fonts want one. It gets no argument but
/// the program's name, since Qt would take --plugin and others for its own. The arguments must outlive it.
std::unique_ptr<QGuiApplication> makeOffscreenApplication(char** arguments);

} // namespace tape
