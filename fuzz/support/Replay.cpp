// The entry routine in libFuzzer's place: gives a target every file of the folders that are named,
// once each, and fails when there is none. A target ends the process when an input breaks a rule;
// the name that was printed last is that input's.

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <QDir>
#include <QFile>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

int main(int argc, char *argv[])
{
    LLVMFuzzerInitialize(&argc, &argv);

    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QFile::decodeName(argv[i]));
        const QStringList names = folder.entryList(QDir::Files | QDir::Hidden, QDir::Name);
        for (const QString &name : names) {
            QFile file(folder.filePath(name));
            std::printf("%s\n", qPrintable(file.fileName()));
            std::fflush(stdout);
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "This input cannot be read.\n");
                return EXIT_FAILURE;
            }
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.constData()),
                                   std::size_t(bytes.size()));
            ++inputs;
        }
    }
    std::printf("%d inputs\n", inputs);
    return inputs > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
