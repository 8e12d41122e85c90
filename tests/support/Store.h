#pragma once

#include <QByteArray>
#include <QString>

/// The file behind the program's settings in this test's private store, on a platform
/// whose settings live in a file. It need not exist.
QString storeFilePath();

/// The store's bytes as they stand in its file; empty without a file.
QByteArray storeBytes();

/// Writes the file anew, past the settings class: @p bytes is the whole file, as in
/// "[General]\ntimerFontSize=10\n".
void writeStoreBytes(const QByteArray &bytes);

/// Removes the file, as on a first run.
void removeStore();
