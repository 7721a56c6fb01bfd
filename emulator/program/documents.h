#pragma once

#include <QStringList>

/// The command "spf-emulator documents": shows the documents of a state folder, also while a register works
/// on it.
namespace documents {

/// The command line begins with the program's name and "documents". Prints what there is to say itself, and
/// gives the exit status.
int run(const QStringList& arguments);

} // namespace documents
