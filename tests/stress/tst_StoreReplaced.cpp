#include <functional>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTest>

#include "ControlFixture.h"
#include "Record.h"
#include "Store.h"
#include "TestMain.h"

using Damage = std::function<void(const QString &path)>;
Q_DECLARE_METATYPE(Damage)

namespace {

/// A preset is added, which is saved at once.
void change(ControlFixture &fixture)
{
    fixture.enterTime(77, 7);
    fixture.button("Add to Preset")->click();
}

const Damage anotherRecord = [](const QString &) {
    AppSettings other;
    other.timerFontSize = 222;
    other.presets = {1, 2, 3, 4, 5, 6, 7, 8};
    saveSettings(other);
};
const Damage garbage = [](const QString &) {
    writeStoreBytes(QByteArray("\0\xff[presets\n=size\\\n\r\x80", 20).repeated(500));
};
const Damage nothing = [](const QString &path) { QVERIFY(QFile::remove(path)); };
const Damage nothingAndNoDirectory = [](const QString &path) {
    QVERIFY(QDir(QFileInfo(path).path()).removeRecursively());
};
const Damage emptyFile = [](const QString &) { writeStoreBytes({}); };
const Damage linkElsewhere = [](const QString &path) {
    const QString target = QDir::tempPath() + QStringLiteral("/velmora-linked-store-")
        + QString::number(QCoreApplication::applicationPid());
    QFile::remove(target);
    QVERIFY(QFile::rename(path, target));
    QVERIFY(QFile::link(target, path));
};

} // namespace

/// The file of the settings is exchanged or lost while the program runs, and then a change is
/// saved. What the running program holds wins, field by field; what it does not know stays.
class StoreReplacedTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(storeFilePath()).removeRecursively();
        removeStore();
        AppSettings record = unusualRecord();
        record.soundEnabled = false;
        saveSettings(record);
    }

    void replaced_isOverruledByTheNextSave_data()
    {
        QTest::addColumn<Damage>("damage");
        QTest::newRow("another record") << anotherRecord;
        QTest::newRow("garbage") << garbage;
        QTest::newRow("no file") << nothing;
        QTest::newRow("no directory") << nothingAndNoDirectory;
        QTest::newRow("an empty file") << emptyFile;
        QTest::newRow("a link to a file elsewhere") << linkElsewhere;
    }

    void replaced_isOverruledByTheNextSave()
    {
        QFETCH(Damage, damage);
        ControlFixture fixture(loadedSettings());
        fixture.show();
        QStringList wanted = fieldLines(fixture.settings);
        damage(storeFilePath());
        QCOMPARE(fieldLines(fixture.settings), wanted);

        change(fixture);
        wanted = fieldLines(fixture.settings);
        QCOMPARE(fixture.settings.presets, QList<int>({45, 90, 45, 77 * 60 + 7}));
        QCOMPARE(storedLines(), wanted);
        const QString target = QFile::symLinkTarget(storeFilePath());
        if (!target.isEmpty())
            QVERIFY(QFile::remove(target));
    }

    void replaced_keepsWhatTheProgramDoesNotKnow()
    {
        ControlFixture fixture(loadedSettings());
        fixture.show();
        writeStoreBytes("[General]\nfromElsewhere=kept\ntimerFontSize=222\n");
        change(fixture);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
        QCOMPARE(QSettings("Velmora", "Velmora").value("fromElsewhere").toString(),
                 QString("kept"));
    }

    void replacedByADirectory_isLeftAlone()
    {
        ControlFixture fixture(loadedSettings());
        fixture.show();
        QVERIFY(QFile::remove(storeFilePath()));
        QVERIFY(QDir().mkpath(storeFilePath()));
        change(fixture);
        QVERIFY(QFileInfo(storeFilePath()).isDir());
        QCOMPARE(fixture.settings.presets, QList<int>({45, 90, 45, 77 * 60 + 7}));

        QVERIFY(QDir().rmdir(storeFilePath()));
        saveSettings(fixture.settings);
        QCOMPARE(storedLines(), fieldLines(fixture.settings));
    }
};

VELMORA_TEST_MAIN(StoreReplacedTest)
#include "tst_StoreReplaced.moc"
