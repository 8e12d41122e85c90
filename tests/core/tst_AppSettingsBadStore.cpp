#include <memory>
#include <new>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include "AppSettings.h"
#include "RecordFields.h"
#include "TestMain.h"

namespace {

constexpr uid_t nobody = 65534;

/// Without the privileges of the superuser while it lives, as tests may run as one whom no
/// permission holds back.
class WithoutPrivileges
{
public:
    WithoutPrivileges()
        : userBefore(geteuid())
    {
        if (userBefore == 0 && seteuid(nobody) != 0)
            qFatal("Cannot give up the superuser's privileges");
    }
    ~WithoutPrivileges()
    {
        if (userBefore == 0 && seteuid(userBefore) != 0)
            qFatal("Cannot take the superuser's privileges back");
    }
    Q_DISABLE_COPY_MOVE(WithoutPrivileges)

private:
    uid_t userBefore;
};

/// A process that memory for some 40 GB is refused to while it lives, as it is on a small machine.
class WithoutMuchMemory
{
public:
    WithoutMuchMemory()
    {
        getrlimit(RLIMIT_AS, &before);
#ifndef __SANITIZE_ADDRESS__ // which reserves terabytes, and refuses by itself
        rlimit limit = before;
        limit.rlim_cur = rlim_t(16) << 30;
        if (setrlimit(RLIMIT_AS, &limit) != 0)
            qFatal("Cannot limit the memory");
#endif
    }
    ~WithoutMuchMemory()
    {
        setrlimit(RLIMIT_AS, &before);
    }
    Q_DISABLE_COPY_MOVE(WithoutMuchMemory)

private:
    rlimit before{};
};

void setMode(const QString &path, mode_t mode)
{
    if (chmod(QFile::encodeName(path).constData(), mode) != 0)
        qFatal("Cannot change the mode of %s", qPrintable(path));
}

const QByteArray someContents = "[General]\nclockFontSize=99\nshortcutReset=F5\n\n"
                                "[presets]\n1\\val=45\nsize=1\n";

// A list of 1,400 million entries, of which the file has none.
const QByteArray endlessList = "@Variant(\\0\\0\\0\\tSize)";

// What can be read, and a value that makes Qt 6.11 throw.
const QByteArray contentsThatQtGivesUp = someContents + "2\\val=" + endlessList + '\n';

bool qtGivesUp()
{
    try {
        QSettings("Velmora", "Velmora").allKeys();
        return false;
    } catch (const std::bad_alloc &) {
        return true;
    }
}

AppSettings loaded()
{
    AppSettings settings;
    loadSettings(settings);
    return settings;
}

} // namespace

/// A store that is damaged, unreadable or not writable: nothing crashes, what can be read
/// is read, and what is stored stays.
///
/// Each test has a store at a place of its own, because the settings class remembers a file
/// by its name, with the changes that it could not write. For the same reason the file is
/// looked at past that class.
class AppSettingsBadStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        home = std::make_unique<QTemporaryDir>();
        QVERIFY(home->isValid());
        setMode(home->path(), 0755); // another user's load must get there
        moveStoreTo(home->path());
        QVERIFY(QDir().mkpath(folder));
    }

    void cleanup()
    {
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        home.reset();
    }

    void brokenFile_yieldsTheDefaultsAndCanBeSavedOver_data()
    {
        QTest::addColumn<QByteArray>("contents");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("blank") << QByteArray("\n\n  \n");
        QTest::newRow("no pairs") << QByteArray("this is\nno settings file\n");
        QTest::newRow("open bracket") << QByteArray("[General\nclockFontSize");
        QTest::newRow("zeros") << QByteArray(4096, '\0');
        QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe=\x80", 20);
        QTest::newRow("open quotes") << QByteArray("[General]\nsomething=\"clockFontSize");
        QTest::newRow("bad escapes") << QByteArray("[General]\nx=\\x\ny=@Variant(\\0\\0)\n%=%ZZ\n");
        QTest::newRow("endless list") << "[General]\ny=" + endlessList + '\n';
        QTest::newRow("another format") << QByteArray("{\"clockFontSize\": 99, \"presets\": [1]}");
    }

    void brokenFile_yieldsTheDefaultsAndCanBeSavedOver()
    {
        QFETCH(QByteArray, contents);
        const WithoutMuchMemory limited;
        writeFile(contents);
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
        QCOMPARE(fileContents(), contents);
        saveSettings(unusualRecord());
        const QByteArray saved = fileContents();
        // Read at another place, where the settings class remembers nothing of the save.
        const QTemporaryDir other;
        moveStoreTo(other.path());
        QVERIFY(QDir().mkpath(folder));
        writeFile(saved);
        QCOMPARE(differingFields(fieldsOf(unusualRecord()), fieldsOf(loaded())), QStringList());
    }

    void halfBrokenFile_yieldsWhatItHolds()
    {
        writeFile("[General]\n\xff\xfe\x80\nno pair here\nclockFontSize=99\n=\n==\n"
                  "[unclosed\nshortcutReset=lost\n[presets]\n1\\val=45\nsize=1\n");
        const AppSettings settings = loaded();
        QCOMPARE(settings.clockFontSize, 99);
        QCOMPARE(settings.presets, QList<int>{45});
    }

    void fileThatQtGivesUp_yieldsTheDefaults()
    {
        const WithoutMuchMemory limited;
        writeFile(contentsThatQtGivesUp);
        if (!qtGivesUp())
            QSKIP("This Qt reads the rest of such a file");
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
        QCOMPARE(fileContents(), contentsThatQtGivesUp);
    }

    void directoryInTheFilesPlace_staysAndYieldsTheDefaults()
    {
        QVERIFY(QDir().mkpath(path + "/inside"));
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
        saveSettings(unusualRecord());
        QVERIFY(QFileInfo(path + "/inside").isDir());
    }

    void file_withoutPermissions_keepsItsContents_data()
    {
        QTest::addColumn<uint>("fileMode");
        QTest::addColumn<uint>("folderMode");
        QTest::addColumn<bool>("isRead");
        QTest::newRow("unreadable file") << 0000U << 0755U << false;
        QTest::newRow("read-only file") << 0444U << 0777U << true;
        QTest::newRow("read-only folder") << 0666U << 0555U << true;
    }

    void file_withoutPermissions_keepsItsContents()
    {
        QFETCH(uint, fileMode);
        QFETCH(uint, folderMode);
        QFETCH(bool, isRead);
        writeFile(someContents);
        RecordFields expected = firstRunFields();
        if (isRead) {
            expected["clockFontSize"] = 99;
            expected["shortcutReset"] = "F5";
            expected["presets"] = QVariant::fromValue(QList<int>{45});
        }
        setMode(path, fileMode);
        setMode(folder, folderMode);
        {
            const WithoutPrivileges asAnyone;
            QCOMPARE(differingFields(expected, fieldsOf(loaded())), QStringList());
            saveSettings(unusualRecord());
        }
        setMode(path, 0644);
        QCOMPARE(fileContents(), someContents);
    }

    void configHomeBelowAFile_yieldsTheDefaultsAndSurvivesASave()
    {
        const QString occupied = home->filePath("occupied");
        QVERIFY(QFile(occupied).open(QIODevice::WriteOnly));
        moveStoreTo(occupied + "/config");
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
        saveSettings(unusualRecord());
        QVERIFY(QFileInfo(occupied).isFile());
        QVERIFY(!QFileInfo::exists(path));
    }

private:
    void moveStoreTo(const QString &configHome)
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, configHome);
        folder = configHome + "/Velmora";
        path = folder + "/Velmora.conf";
    }

    void writeFile(const QByteArray &contents) const
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
            qFatal("Cannot write the test's store %s", qPrintable(path));
    }

    QByteArray fileContents() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> home;
    QString folder; ///< the folder of the store's file
    QString path;   ///< the store's file
};

VELMORA_TEST_MAIN(AppSettingsBadStoreTest)
#include "tst_AppSettingsBadStore.moc"
