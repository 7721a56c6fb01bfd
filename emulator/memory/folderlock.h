#pragma once

#include <QString>

namespace emulator {

/// Keeps a folder for one process at a time. It ends with the process, however that does.
class FolderLock
{
public:
    /// Makes the folder where it is missing; throws MemoryError that tells who has it.
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int m_file = -1;
};

} // namespace emulator
