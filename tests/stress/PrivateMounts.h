#pragma once

#include <QString>

/// File systems that only this process sees. Nothing of the machine's own is mounted again.
namespace mounts {

/// Gives the process a mount table of its own, as root or, where the kernel lets anyone be
/// root in a namespace, as anybody. To be called before there is a second thread. Returns why
/// it cannot be had; empty on success.
QString separate();

/// A new, empty file system in memory over the directory.
bool mountSmall(const QString &directory, const char *size);
/// Makes the directory's file system read-only, or writable again.
bool setReadOnly(const QString &directory, bool readOnly);
void unmount(const QString &directory);

} // namespace mounts
