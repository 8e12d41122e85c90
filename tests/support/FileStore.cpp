#include "Store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

// The store of a platform whose settings live in a file.

struct PrivateStore::Place
{
    QTemporaryDir home;
};

PrivateStore::PrivateStore()
    : place(std::make_unique<Place>())
{
    const QTemporaryDir &home = place->home;
    if (!home.isValid())
        qFatal("No directory for the test's settings: %s", qPrintable(home.errorString()));
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
    qputenv("XDG_DATA_HOME", home.filePath("data").toUtf8());
    qputenv("XDG_CACHE_HOME", home.filePath("cache").toUtf8());
}

PrivateStore::~PrivateStore() = default;

QString PrivateStore::folder() const
{
    return place->home.path();
}

QString storeFilePath()
{
    return QSettings(QStringLiteral("Velmora"), QStringLiteral("Velmora")).fileName();
}

bool storeExists()
{
    return QFile::exists(storeFilePath());
}

QDateTime storeChanged()
{
    return QFileInfo(storeFilePath()).lastModified();
}

QByteArray storeBytes()
{
    QFile file(storeFilePath());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeStoreBytes(const QByteArray &bytes)
{
    const QString path = storeFilePath();
    // A settings object remembers a file by size and time, both of which a test could
    // reproduce by accident; one that finds the file gone forgets it.
    QFile::remove(path);
    storeFilePath();
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("Cannot write the test's store %s", qPrintable(path));
}

// A folder in the file's place cannot be written, even by root.
void blockStore()
{
    if (!QDir().mkpath(storeFilePath()))
        qFatal("Cannot make a folder in the place of the test's store");
}

void removeStore()
{
    QDir().rmdir(storeFilePath());
    QFile::remove(storeFilePath());
}
