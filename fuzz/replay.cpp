#include "harness.h"

#include <QDir>
#include <QFile>

namespace {

/// The number of files; -1 when one cannot be read.
int replayFolder(const QString& name)
{
    int count = 0;
    const QDir folder(name);
    for (const QString& file : folder.entryList(QDir::Files, QDir::Name)) {
        QFile input(folder.filePath(file));
        if (!input.open(QIODevice::ReadOnly))
            return -1;
        // Before it runs, so that an input that ends the program is known.
        std::printf("%s\n", input.fileName().toUtf8().constData());
        std::fflush(stdout);
        const QByteArray bytes = input.readAll();
        LLVMFuzzerTestOneInput(
            reinterpret_cast<const unsigned char*>(bytes.constData()), static_cast<size_t>(bytes.size()));
        ++count;
    }
    return count;
}

} // namespace

/// Runs the inputs of the folders: the seeds, which must be some, and what was learnt and found, which may be
/// none.
int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        const int count = replayFolder(QFile::decodeName(argv[i]));
        std::printf("%s: %d inputs\n", argv[i], count);
        if (count < 0 || (i == 1 && count == 0)) {
            std::fprintf(stderr, "replay: no inputs in %s\n", argv[i]);
            return 1;
        }
    }
    return argc > 1 ? 0 : 2;
}
