#include "Store.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <qt_windows.h>

// The store of Windows, the registry. While a test runs, what the process takes for the
// user's part of the registry is a key of its own there.

namespace {

const wchar_t testsKey[] = L"Software\\Velmora tests";
const wchar_t storeKey[] = L"Software\\Velmora\\Velmora";
const wchar_t vendorsKey[] = L"Software\\Velmora";

void verify(LSTATUS status, const char *what)
{
    if (status != ERROR_SUCCESS)
        qFatal("%s: %s", what, qPrintable(qt_error_string(int(status))));
}

HKEY createKey(HKEY parent, const QString &path, DWORD options)
{
    HKEY key = nullptr;
    verify(RegCreateKeyExW(parent, reinterpret_cast<const wchar_t *>(path.utf16()), 0, nullptr,
                           options, KEY_ALL_ACCESS, nullptr, &key, nullptr),
           "No key for the test's settings");
    return key;
}

// The private part, and one in which no lasting key can be made, because it does not last
// itself.
HKEY privatePart = nullptr;
HKEY blockedPart = nullptr;

void usePart(HKEY part)
{
    verify(RegOverridePredefKey(HKEY_CURRENT_USER, part), "No private part of the registry");
}

QSettings registry()
{
    return QSettings(QStringLiteral("Velmora"), QStringLiteral("Velmora"));
}

} // namespace

struct PrivateStore::Place
{
    // On the current drive, so that a path to it needs none.
    QTemporaryDir folder{QStringLiteral("test-XXXXXX")};
    QString name = QString::number(QCoreApplication::applicationPid());
};

PrivateStore::PrivateStore()
    : place(std::make_unique<Place>())
{
    // The developer reads what the tests print; Qt would tell a debugger alone.
    qputenv("QT_FORCE_STDERR_LOGGING", "1");
    const HKEY tests =
        createKey(HKEY_CURRENT_USER, QString::fromWCharArray(testsKey), REG_OPTION_NON_VOLATILE);
    privatePart = createKey(tests, place->name, REG_OPTION_NON_VOLATILE);
    blockedPart = createKey(tests, place->name + QStringLiteral(" blocked"), REG_OPTION_VOLATILE);
    RegCloseKey(tests);
    usePart(privatePart);
}

PrivateStore::~PrivateStore()
{
    usePart(nullptr);
    RegCloseKey(privatePart);
    RegCloseKey(blockedPart);
    HKEY tests = createKey(HKEY_CURRENT_USER, QString::fromWCharArray(testsKey), 0);
    for (const QString &name : {place->name, QString(place->name + QStringLiteral(" blocked"))})
        RegDeleteTreeW(tests, reinterpret_cast<const wchar_t *>(name.utf16()));
    RegCloseKey(tests);
}

QString PrivateStore::folder() const
{
    return place->folder.path();
}

QString storeFilePath()
{
    return registry().fileName();
}

bool storeExists()
{
    // Qt makes an empty key for a user who could write to it.
    return !registry().allKeys().isEmpty();
}

QDateTime storeChanged()
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, storeKey, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return {};
    FILETIME time{};
    const LSTATUS status = RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr,
                                            nullptr, nullptr, nullptr, nullptr, nullptr, &time);
    RegCloseKey(key);
    verify(status, "No time of the test's settings");
    // In units of 100 ns since 1601, which is so many milliseconds before the epoch.
    const qint64 ticks = (qint64(time.dwHighDateTime) << 32) + time.dwLowDateTime;
    return QDateTime::fromMSecsSinceEpoch(ticks / 10000 - 11644473600000);
}

QByteArray storeBytes()
{
    const QSettings stored = registry();
    if (stored.allKeys().isEmpty())
        return {};
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("store.ini"));
    {
        QSettings file(path, QSettings::IniFormat);
        for (const QString &key : stored.allKeys())
            file.setValue(key, stored.value(key));
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        qFatal("Cannot read %s", qPrintable(path));
    return file.readAll();
}

void writeStoreBytes(const QByteArray &bytes)
{
    removeStore();
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("store.ini")));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("Cannot write %s", qPrintable(file.fileName()));
    file.close();
    const QSettings texts(file.fileName(), QSettings::IniFormat);
    QSettings stored = registry();
    for (const QString &key : texts.allKeys()) {
        const QVariant value = texts.value(key);
        bool isNumber = false;
        const int number = value.toString().toInt(&isNumber);
        stored.setValue(key, isNumber ? QVariant(number) : value);
    }
}

void blockStore()
{
    usePart(blockedPart);
}

void removeStore()
{
    usePart(privatePart);
    RegDeleteTreeW(HKEY_CURRENT_USER, vendorsKey);
}
