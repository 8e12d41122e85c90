#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QSpinBox>
#include <QTest>

#include "AppSettings.h"
#include "DialogView.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

const QString headings = QStringLiteral("| Setting | Set in | Range | Default | Storage key |");

/// The numbers of the text, from left to right.
QList<int> numbersIn(const QString &text)
{
    static const QRegularExpression number("\\d+");
    QList<int> numbers;
    for (const QRegularExpressionMatch &match : number.globalMatch(text))
        numbers.append(match.captured().toInt());
    return numbers;
}

/// A value as the guide writes it, in the form in which it is stored.
QString storedForm(const QString &written)
{
    static const QRegularExpression duration("^(\\d+) min(?: (\\d+) sec)?$");
    static const QRegularExpression number("^(\\d+) (?:px|sec)$");
    static const QRegularExpression text("^`([^`]+)`$");
    if (written == "on" || written == "off")
        return written == "on" ? "true" : "false";
    if (written == "none")
        return {};
    if (written.contains(", ")) {
        QStringList values;
        for (const QString &value : written.split(", "))
            values.append(storedForm(value));
        return values.join(',');
    }
    if (const auto match = duration.match(written); match.hasMatch())
        return QString::number(match.captured(1).toInt() * 60 + match.captured(2).toInt());
    if (const auto match = number.match(written); match.hasMatch())
        return match.captured(1);
    if (const auto match = text.match(written); match.hasMatch())
        return match.captured(1);
    return "not understood: " + written;
}

/// What stands in the store now: the values by their keys, an array's in one text.
QMap<QString, QString> storedValues()
{
    QSettings store(storeFilePath(), QSettings::NativeFormat);
    QMap<QString, QString> values;
    for (const QString &key : store.childKeys())
        values.insert(key, store.value(key).toString());
    for (const QString &array : store.childGroups()) {
        QStringList elements;
        const int size = store.beginReadArray(array);
        for (int i = 0; i < size; ++i) {
            store.setArrayIndex(i);
            elements.append(store.value("val").toString());
        }
        store.endArray();
        values.insert(array, elements.join(','));
    }
    return values;
}

QString loadedAndSaved(const QString &key, int value)
{
    writeStoreBytes(QString("[General]\n%1=%2\n").arg(key).arg(value).toUtf8());
    AppSettings settings;
    loadSettings(settings);
    saveSettings(settings);
    return storedValues().value(key);
}

QList<int> rangesOf(const QList<QSpinBox *> &spinBoxes)
{
    QList<int> ranges;
    for (const QSpinBox *spinBox : spinBoxes) {
        if (spinBox)
            ranges << spinBox->minimum() << spinBox->maximum();
    }
    return ranges;
}

} // namespace

/// The table of every setting in the user guide, against the store that the program writes
/// and the numbers that its dialog takes.
class UserGuideTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QFile guide(VELMORA_USER_GUIDE);
        QVERIFY2(guide.open(QIODevice::ReadOnly), VELMORA_USER_GUIDE);
        const QStringList lines = QString::fromUtf8(guide.readAll()).split('\n');
        const qsizetype start = lines.indexOf(headings);
        QVERIFY2(start >= 0, "The guide has no table of every setting");
        for (qsizetype i = start + 2; i < lines.size() && lines.at(i).startsWith('|'); ++i) {
            const QStringList cells = lines.at(i).split('|');
            QVERIFY2(cells.size() == 7, qPrintable("Not of five cells: " + lines.at(i)));
            rows.append({cells.at(1).trimmed(), cells.at(3).trimmed(), cells.at(4).trimmed(),
                         storedForm(cells.at(5).trimmed())});
        }
    }

    void init() { removeStore(); }

    void table_namesEveryStorageKeyOnce()
    {
        saveSettings(AppSettings());
        QStringList keys;
        for (const Row &row : std::as_const(rows))
            keys.append(row.key);
        keys.sort();
        QCOMPARE(keys, QStringList(storedValues().keys()));
    }

    void table_hasTheDefaultsOfAFirstRun()
    {
        AppSettings firstRun;
        loadSettings(firstRun);
        saveSettings(firstRun);
        const QMap<QString, QString> stored = storedValues();
        for (const Row &row : std::as_const(rows))
            QCOMPARE(row.key + ": " + storedForm(row.defaultValue),
                     row.key + ": " + stored[row.key]);
    }

    void table_hasTheRangesOfTheDialog()
    {
        AppSettings settings;
        SettingsDialog dialog(&settings);
        const DialogView view(dialog);
        for (const Row &row : std::as_const(rows)) {
            if (row.key.endsWith("FontSize"))
                QCOMPARE(numbersIn(row.range), rangesOf({view.fontSize(row.setting)}));
        }
        QCOMPARE(numbersIn(rangeOf("warningThreshold")),
                 rangesOf(view.spinBoxesUnder("WARNING THRESHOLD")));
        // Minutes, seconds, and the most that is read.
        QCOMPARE(numbersIn(rangeOf("defaultDuration")).size(), 5);
        QCOMPARE(numbersIn(rangeOf("defaultDuration")).first(4),
                 rangesOf(view.spinBoxesUnder("DEFAULT DURATION")));
    }

    void table_hasTheRangesOfTheLoad()
    {
        for (const char *key :
             {"timerFontSize", "clockFontSize", "messageFontSize", "warningThreshold"}) {
            const QList<int> range = numbersIn(rangeOf(key));
            QCOMPARE(range.size(), 2);
            QCOMPARE(loadedAndSaved(key, range.first() - 1), QString::number(range.first()));
            QCOMPARE(loadedAndSaved(key, range.last() + 1), QString::number(range.last()));
        }
        // In minutes, and less than the dialog takes.
        const int most = numbersIn(rangeOf("defaultDuration")).last() * 60;
        QCOMPARE(loadedAndSaved("defaultDuration", most), QString::number(most));
        QCOMPARE(loadedAndSaved("defaultDuration", most + 1), QString::number(most));
        QCOMPARE(loadedAndSaved("defaultDuration", -1), QString("0"));
    }

private:
    struct Row
    {
        QString setting;
        QString range;
        QString defaultValue;
        QString key;
    };

    QString rangeOf(const QString &key) const
    {
        for (const Row &row : rows) {
            if (row.key == key)
                return row.range;
        }
        return {};
    }

    QList<Row> rows;
};

VELMORA_TEST_MAIN(UserGuideTest)
#include "tst_UserGuide.moc"
