#include "Store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

QString storeFilePath()
{
    return QSettings(QStringLiteral("Velmora"), QStringLiteral("Velmora")).fileName();
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

void removeStore()
{
    QFile::remove(storeFilePath());
}
