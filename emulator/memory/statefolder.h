#pragma once

#include "memory/folderlock.h"

#include <QStringList>

namespace emulator {

struct Identity;

/// The folder of a state, for one process at a time: the state, and the snapshots of it that have names.
/// Every operation throws MemoryError.
class StateFolder
{
public:
    /// Makes the folder where it is missing.
    explicit StateFolder(const QString& folder);

    QString stateFile() const { return stateFileOf(m_folder); }
    static QString stateFileOf(const QString& folder);
    /// Makes an empty state where there is none, as a whole or not at all. Gives its file.
    QString madeStateFile() const;

    /// Letters, digits, points, hyphens and underscores.
    static bool isSnapshotName(const QString& name);
    QStringList snapshots() const;
    /// The state is lost, its snapshots are not.
    void removeState() const;
    /// Keeps the state under a name; one of that name is replaced. It is there as a whole or not at all.
    void keepSnapshot(const QString& name) const;
    void removeSnapshot(const QString& name) const;
    /// Puts the state of that name in the place of the present one, which may be damaged or missing. With an
    /// identity, throws ForeignState when it is of a register with another factory number or model.
    void restoreSnapshot(const QString& name, const Identity* wanted = nullptr) const;

private:
    QString snapshotFile(const QString& name) const;
    /// Brings everything of the log of the present state into its file.
    void emptyLog() const;

    QString m_folder;
    FolderLock m_lock;
};

} // namespace emulator
