#include "Fuzzing.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifdef VELMORA_LEAK_CHECK
#include <sanitizer/lsan_interface.h>
#endif

#include <QApplication>
#include <QTemporaryDir>

namespace {

// All three stay reachable until the end: the fuzzer ends by exit(), with windows still there.
QTemporaryDir *home = nullptr;
QApplication *application = nullptr;
void (*warningHandler)(const QString &text) = nullptr;

void handleMessage(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    if (type == QtFatalMsg)
        require(false, "Qt gives up", text);
    if (type == QtWarningMsg && warningHandler)
        warningHandler(text);
}

// While everything is alive: at the end some versions of Qt have torn down half of what they keep.
// Ever more rarely, as a check takes longer than an input.
void checkForLeaks()
{
#ifdef VELMORA_LEAK_CHECK
    static int inputs = 0;
    ++inputs;
    if (inputs >= 16 && (inputs & (inputs - 1)) == 0)
        require(__lsan_do_recoverable_leak_check() == 0, "Memory is lost, see above");
#endif
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    home = new QTemporaryDir;
    require(home->isValid(), "No directory for the store");
    std::atexit([] { home->remove(); });
    qputenv("XDG_CONFIG_HOME", home->filePath(QStringLiteral("config")).toUtf8());
    qputenv("XDG_DATA_HOME", home->filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_CACHE_HOME", home->filePath(QStringLiteral("cache")).toUtf8());
    qputenv("TMPDIR", home->path().toUtf8()); // what targets keep goes with it
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(handleMessage);

    // Not the fuzzer's own arguments, which the application would search for options.
    static int count = 1;
    static char *arguments[] = {(*argv)[0], nullptr};
    require(*argc > 0, "No name of the program");
    application = new QApplication(count, arguments);
    return 0;
}

void require(bool holds, const char *what)
{
    require(holds, what, QString());
}

void require(bool holds, const char *what, const QString &detail)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s %s\n", what, qPrintable(detail));
    std::abort();
}

void onWarning(void (*handler)(const QString &text))
{
    warningHandler = handler;
}

Input::Input(const std::uint8_t *data, std::size_t size)
    : bytes(reinterpret_cast<const char *>(data), qsizetype(size))
{
    checkForLeaks();
}

int Input::choice(int count)
{
    if (next >= bytes.size())
        return 0;
    return std::uint8_t(bytes.at(next++)) % count;
}

QByteArray Input::line()
{
    const qsizetype found = bytes.indexOf('\n', next);
    const qsizetype end = found < 0 ? bytes.size() : found;
    QByteArray taken = bytes.mid(next, end - next);
    next = found < 0 ? end : end + 1;
    return taken;
}

QByteArray Input::rest()
{
    QByteArray taken = bytes.mid(next);
    next = bytes.size();
    return taken;
}

QString textOf(const QByteArray &bytes, bool wide)
{
    if (!wide)
        return QString::fromUtf8(bytes);
    QString text(bytes.size() / qsizetype(sizeof(char16_t)), Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), std::size_t(text.size()) * sizeof(char16_t));
    return text;
}
