#include <QMap>
#include <QTest>

#include <qt_windows.h>

#include "AppSettings.h"
#include "RecordFields.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QString storeKey = QStringLiteral("Software\\Velmora\\Velmora");
const QString presetKey = storeKey + QStringLiteral("\\presets\\1");

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

/// A key of the user's part of the registry, made if need be.
class Key
{
public:
    explicit Key(const QString &path)
    {
        if (RegCreateKeyExW(HKEY_CURRENT_USER, wide(path), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                            &key, nullptr)
            != ERROR_SUCCESS)
            qFatal("Cannot make the key %s", qPrintable(path));
    }
    ~Key() { RegCloseKey(key); }
    Q_DISABLE_COPY_MOVE(Key)

    void set(const QString &name, DWORD kind, const QByteArray &bytes)
    {
        const auto *data = reinterpret_cast<const BYTE *>(bytes.constData());
        if (RegSetValueExW(key, wide(name), 0, kind, data, DWORD(bytes.size())) != ERROR_SUCCESS)
            qFatal("Cannot set %s", qPrintable(name));
    }

private:
    HKEY key = nullptr;
};

struct Value
{
    DWORD kind = REG_NONE;
    QByteArray bytes;
};

Value value(const QString &path, const QString &name)
{
    Value found;
    DWORD size = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, wide(path), wide(name), RRF_RT_ANY, &found.kind, nullptr,
                     &size)
        != ERROR_SUCCESS)
        return {};
    found.bytes.resize(int(size));
    RegGetValueW(HKEY_CURRENT_USER, wide(path), wide(name), RRF_RT_ANY, &found.kind,
                 found.bytes.data(), &size);
    found.bytes.truncate(int(size));
    return found;
}

QString text(const QString &path, const QString &name)
{
    const Value found = value(path, name);
    if (found.kind != REG_SZ)
        return QStringLiteral("of kind %1").arg(found.kind);
    return QString::fromWCharArray(reinterpret_cast<const wchar_t *>(found.bytes.constData()));
}

QVariant number(const QString &path, const QString &name)
{
    const Value found = value(path, name);
    qint64 wide = 0; // Qt's own number, that of an array's elements
    qint32 narrow = 0;
    if (found.kind == REG_QWORD && found.bytes.size() == sizeof wide) {
        memcpy(&wide, found.bytes.constData(), sizeof wide);
        return int(wide);
    }
    if (found.kind != REG_DWORD || found.bytes.size() != sizeof narrow)
        return QStringLiteral("of kind %1").arg(found.kind);
    memcpy(&narrow, found.bytes.constData(), sizeof narrow);
    return int(narrow);
}

QByteArray bytesOf(DWORD number)
{
    return {reinterpret_cast<const char *>(&number), sizeof number};
}

QByteArray bytesOf(const QString &text)
{
    return {reinterpret_cast<const char *>(text.utf16()), (text.size() + 1) * 2};
}

AppSettings loaded()
{
    AppSettings settings;
    loadSettings(settings);
    return settings;
}

} // namespace

/// The store as Windows' own functions see it: its place in the registry, the kind of each value,
/// and values of kinds that the program never writes.
class AppSettingsRegistryTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    // Texts and flags as texts, numbers as numbers, presets as numbered keys.
    void save_writesEachKindBelowTheUsersSoftwareKey()
    {
        QCOMPARE(value(storeKey, "bgColor").kind, DWORD(REG_NONE));
        AppSettings settings = unusualRecord();
        settings.clockFontSize = -1; // what is saved is not clamped
        saveSettings(settings);
        const QMap<QString, QString> texts{{"clock24hr", "false"},
                                           {"clockShowSeconds", "false"},
                                           {"overtimeEnabled", "false"},
                                           {"blinkEnabled", "false"},
                                           {"bgImageEnabled", "true"},
                                           {"soundEnabled", "true"},
                                           {"bgColor", "#010203"},
                                           {"timerColorNormal", "#040506"},
                                           {"timerColorWarning", "#070809"},
                                           {"timerColorCritical", "#0a0b0c"},
                                           {"clockColor", "#0d0e0f"},
                                           {"messageColor", "#101112"},
                                           {"bgImagePath", "/pictures/Stage left.png"},
                                           {"soundFilePath", "/sounds/gong.wav"},
                                           {"shortcutStartPause", "F1"},
                                           {"shortcutReset", "Ctrl+R"},
                                           {"shortcutPlusMin", "Num+5"},
                                           {"shortcutMinusMin", "Ctrl+K, Ctrl+C"},
                                           {"shortcutToggleOutput", ""}};
        for (auto it = texts.cbegin(); it != texts.cend(); ++it)
            QCOMPARE(it.key() + '=' + text(storeKey, it.key()), it.key() + '=' + it.value());
        QCOMPARE(number(storeKey, "timerFontSize"), QVariant(31));
        QCOMPARE(number(storeKey, "clockFontSize"), QVariant(-1));
        QCOMPARE(number(storeKey, "messageFontSize"), QVariant(13));
        QCOMPARE(number(storeKey, "defaultDuration"), QVariant(754));
        QCOMPARE(number(storeKey, "warningThreshold"), QVariant(17));
        const QString presets = storeKey + "\\presets";
        QCOMPARE(number(presets, "size"), QVariant(3));
        QCOMPARE(number(presets + "\\1", "val"), QVariant(45));
        QCOMPARE(number(presets + "\\2", "val"), QVariant(90));
        QCOMPARE(number(presets + "\\3", "val"), QVariant(45));
    }

    void load_storesNothing()
    {
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
        DWORD keys = 0;
        DWORD values = 0;
        // Qt makes the key for a user who could write to it.
        HKEY key = nullptr;
        QCOMPARE(RegOpenKeyExW(HKEY_CURRENT_USER, wide(storeKey), 0, KEY_READ, &key),
                 LSTATUS(ERROR_SUCCESS));
        QCOMPARE(RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                  nullptr, nullptr, nullptr, nullptr),
                 LSTATUS(ERROR_SUCCESS));
        RegCloseKey(key);
        QCOMPARE(keys, DWORD(0));
        QCOMPARE(values, DWORD(0));
    }

    // A number of this kind is never negative; a user's -1 is stored as all bits.
    void number_storedAsATextOrAsAllBits_isRead()
    {
        Key key(storeKey);
        key.set("clockFontSize", REG_SZ, bytesOf(QStringLiteral("99")));
        QCOMPARE(loaded().clockFontSize, 99);
        key.set("clockFontSize", REG_DWORD, bytesOf(0xFFFFFFFF));
        QCOMPARE(loaded().clockFontSize, 20);
    }

    void flag_storedAsANumber_isRead()
    {
        Key key(storeKey);
        for (const DWORD stored : {0UL, 1UL, 2UL}) {
            key.set("clock24hr", REG_DWORD, bytesOf(stored));
            key.set("soundEnabled", REG_DWORD, bytesOf(stored));
            QCOMPARE(loaded().clock24hr, stored != 0);
            QCOMPARE(loaded().soundEnabled, stored != 0);
        }
    }

    void valueOfAnotherKind_harmsNothing_data()
    {
        QTest::addColumn<uint>("kind");
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray noise("\xff\x00\xd8\x41\x00\xdc\x01", 7);
        QTest::newRow("bytes") << uint(REG_BINARY) << noise;
        QTest::newRow("no bytes") << uint(REG_BINARY) << QByteArray();
        QTest::newRow("nothing") << uint(REG_NONE) << QByteArray();
        QTest::newRow("a text without an end") << uint(REG_SZ) << noise;
        QTest::newRow("texts without an end") << uint(REG_MULTI_SZ) << noise;
        QTest::newRow("a short number") << uint(REG_DWORD) << QByteArray("\x07", 1);
        QTest::newRow("a number of 64 bits") << uint(REG_QWORD) << QByteArray(8, '\x7f');
    }

    // Every value has the strange kind but one, which is read all the same.
    void valueOfAnotherKind_harmsNothing()
    {
        QFETCH(uint, kind);
        QFETCH(QByteArray, bytes);
        Key key(storeKey);
        const QStringList names = firstRunFields().keys();
        for (const QString &name : names) {
            if (name != "presets")
                key.set(name, kind, bytes);
        }
        key.set("messageFontSize", REG_DWORD, bytesOf(40));
        Key(presetKey).set("val", kind, bytes);
        const AppSettings settings = loaded();
        QCOMPARE(settings.messageFontSize, 40);
        QCOMPARE(settings.presets, QList<int>({300, 600, 900, 1800})); // there is no size
        QVERIFY(settings.timerFontSize >= 30 && settings.timerFontSize <= 550);
        QVERIFY(settings.defaultDuration >= 0 && settings.defaultDuration <= 59940);
        saveSettings(unusualRecord());
        QCOMPARE(differingFields(fieldsOf(unusualRecord()), fieldsOf(loaded())), QStringList());
    }

    void keyInAValuesPlace_isNoValue()
    {
        Key(storeKey + "\\clockFontSize").set("inside", REG_DWORD, bytesOf(99));
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
    }

    void storeThatCannotBeMade_yieldsTheDefaultsAndSurvivesASave()
    {
        blockStore();
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
        saveSettings(unusualRecord());
        QVERIFY(!storeExists());
        QCOMPARE(differingFields(firstRunFields(), fieldsOf(loaded())), QStringList());
    }
};

VELMORA_TEST_MAIN(AppSettingsRegistryTest)
#include "tst_AppSettingsRegistry.moc"
