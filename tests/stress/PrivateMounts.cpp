#include "PrivateMounts.h"

#include <cerrno>
#include <cstring>

#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

bool write(const char *path, const QByteArray &text)
{
    QFile file{QLatin1String(path)};
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

/// Root in a namespace of its own, which need not be root outside of it.
bool becomeRootOfANamespace()
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write("/proc/self/setgroups", "deny")
        && write("/proc/self/uid_map", "0 " + QByteArray::number(user) + " 1")
        && write("/proc/self/gid_map", "0 " + QByteArray::number(group) + " 1");
}

} // namespace

QString mounts::separate()
{
    const bool hasOwnTable = ::unshare(CLONE_NEWNS) == 0 || becomeRootOfANamespace();
    // Without this, what is mounted here would be seen outside, too.
    if (hasOwnTable && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0)
        return {};
    return QStringLiteral("no mount table of its own is to be had here: ")
        + QString::fromLocal8Bit(std::strerror(errno));
}

bool mounts::mountSmall(const QString &directory, const char *size)
{
    const QByteArray options = QByteArray("mode=700,size=").append(size);
    return ::mount("tmpfs", QFile::encodeName(directory).constData(), "tmpfs", 0,
                   options.constData())
        == 0;
}

bool mounts::setReadOnly(const QString &directory, bool readOnly)
{
    unsigned long flags = MS_REMOUNT;
    if (readOnly)
        flags |= MS_RDONLY;
    return ::mount("none", QFile::encodeName(directory).constData(), nullptr, flags, nullptr) == 0;
}

void mounts::unmount(const QString &directory)
{
    ::umount2(QFile::encodeName(directory).constData(), MNT_DETACH);
}
