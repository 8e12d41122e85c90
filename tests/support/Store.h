#pragma once

#include <memory>

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// A settings store for this process alone, empty at first and removed with the object. The
/// user's own settings are neither read nor written meanwhile. One lives in every test.
class PrivateStore
{
public:
    PrivateStore();
    ~PrivateStore();
    Q_DISABLE_COPY_MOVE(PrivateStore)

    /// A folder for files, that goes with the store.
    QString folder() const;

private:
    struct Place;
    std::unique_ptr<Place> place;
};

/// The file behind the program's settings in this test's private store, or on Windows their key in
/// the registry. It need not exist.
QString storeFilePath();
bool storeExists();
/// When the store was last written to; invalid without a store.
QDateTime storeChanged();

/// What is stored, in the form of a settings file; empty without a store. Of a file, its bytes as
/// they stand.
QByteArray storeBytes();

/// Stores @p bytes and nothing else, past the settings class: a whole file, as in
/// "[General]\ntimerFontSize=10\n". In the registry, a decimal number of 32 bits becomes one.
void writeStoreBytes(const QByteArray &bytes);

/// Has every save fail from now on, until removeStore().
void blockStore();

/// Removes the store, as on a first run.
void removeStore();
