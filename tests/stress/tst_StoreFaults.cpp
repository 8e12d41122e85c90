#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QSignalSpy>
#include <QTest>

#include "ControlFixture.h"
#include "PrivateMounts.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

namespace {

constexpr qint64 page = 4096;

/// The operator's changes while nothing can be stored: a preset more and the cue switched on.
void change(ControlFixture &fixture)
{
    fixture.enterTime(77, 7);
    fixture.button("Add to Preset")->click();
    fixture.button("Enable sound cue")->click();
}

/// Whether the changes are in the record and are seen, and the count goes on.
void verifyGoesOn(ControlFixture &fixture)
{
    QCOMPARE(fixture.settings.presets.constLast(), 77 * 60 + 7);
    QVERIFY(fixture.settings.soundEnabled);
    const auto *strip = fixture.named<QListWidget>("presetList");
    QCOMPARE(strip->item(strip->count() - 1)->text(), QString("77:07"));
    const int before = fixture.engine.remaining();
    fixture.letSecondsPass();
    fixture.engine.start();
    QSignalSpy ticks(&fixture.engine, &TimerEngine::tick);
    QVERIFY(ticks.wait());
    QCOMPARE(fixture.engine.remaining(), before - 1);
    fixture.engine.pause();
}

} // namespace

/// A store that cannot be written while the program runs: the disk is full, or read-only. What
/// is changed stays in the running program, the old store stays whole, and the next save that
/// can be written brings everything.
class StoreFaultsTest : public QObject
{
    Q_OBJECT

public:
    explicit StoreFaultsTest(const QString &noMounts)
        : noMounts(noMounts)
    {
    }

private slots:
    void init()
    {
        if (!noMounts.isEmpty())
            QSKIP(qPrintable("Not tried: " + noMounts));
        QVERIFY(QDir().mkpath(storeDirectory()));
        QVERIFY(mounts::mountSmall(storeDirectory(), "1m"));
    }

    void cleanup() { mounts::unmount(storeDirectory()); }

    void fullDisk_losesNothing_data()
    {
        QTest::addColumn<qint64>("bytesLeft");
        QTest::newRow("not a byte is left") << qint64(0);
        QTest::newRow("there is room for the lock and a part of the store") << 8 * page;
    }

    void fullDisk_losesNothing()
    {
        QFETCH(qint64, bytesLeft);
        AppSettings record = unusualRecord();
        record.presets.clear();
        for (int i = 1; i <= 9000; ++i)
            record.presets.append(10'000 + i);
        record.soundEnabled = false;
        saveSettings(record);
        const QByteArray before = storeBytes();
        QVERIFY(before.size() > 20 * page);
        fillDisk(bytesLeft);

        ControlFixture fixture(loadedSettings());
        fixture.show();
        change(fixture);
        QCOMPARE(storeBytes(), before);
        verifyGoesOn(fixture);

        QVERIFY(QFile::remove(fillerPath()));
        saveSettings(fixture.settings);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
    }

    void fullDiskWithoutAStore_losesNothing()
    {
        fillDisk(0);
        ControlFixture fixture(loadedSettings());
        fixture.show();
        change(fixture);
        QCOMPARE(storeBytes(), QByteArray());
        verifyGoesOn(fixture);

        QVERIFY(QFile::remove(fillerPath()));
        saveSettings(fixture.settings);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
    }

    void readOnlyStore_losesNothing()
    {
        AppSettings record = unusualRecord();
        record.soundEnabled = false;
        saveSettings(record);
        const QByteArray before = storeBytes();
        QVERIFY(mounts::setReadOnly(storeDirectory(), true));

        ControlFixture fixture(loadedSettings());
        fixture.show();
        change(fixture);
        QCOMPARE(storeBytes(), before);
        verifyGoesOn(fixture);

        QVERIFY(mounts::setReadOnly(storeDirectory(), false));
        saveSettings(fixture.settings);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
    }

private:
    QString storeDirectory() const { return QFileInfo(storeFilePath()).path(); }
    QString fillerPath() const { return storeDirectory() + "/filler"; }

    void fillDisk(qint64 bytesLeft) const
    {
        QFile filler(fillerPath());
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(page, 'x')) == page) { }
        QVERIFY(filler.resize(filler.size() / page * page - bytesLeft));
    }

    QString noMounts;
};

int main(int argc, char *argv[])
{
    // While there is but one thread, and so before the application.
    const QString noMounts = mounts::separate();
    return runTest(argc, argv, TestPlatform(),
                   [&noMounts] { return new StoreFaultsTest(noMounts); });
}

#include "tst_StoreFaults.moc"
