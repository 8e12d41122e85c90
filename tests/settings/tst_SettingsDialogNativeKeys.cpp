#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include "Editor.h"
#include "Store.h"
#include "TestMain.h"

namespace {

// A desktop whose Control key has a name of its own.
class NativeNames : public QTranslator
{
public:
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        if (qstrcmp(context, "QShortcut") == 0 && qstrcmp(sourceText, "Ctrl") == 0)
            return "Strg";
        return {};
    }
    bool isEmpty() const override { return false; }
};

} // namespace

// The native and the portable text of a sequence differ only where keys bear native names.
class SettingsDialogNativeKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Before any sequence is read: Qt looks the names up once.
        auto *names = new NativeNames;
        names->setParent(this);
        QVERIFY(QCoreApplication::installTranslator(names));
    }

    void init() { removeStore(); }

    void captured_isShownNativelyAndStoredPortably()
    {
        Editor editor;
        editor.runToOk([&] {
            editor.showPage("Shortcuts");
            QTest::mouseClick(editor.setKeyButton(1), Qt::LeftButton);
            QTest::keyClick(editor.dialog.windowHandle(), Qt::Key_1, Qt::ControlModifier);
            QCOMPARE(editor.keyLabel(1)->text(), "Strg+1");
        });
        QCOMPARE(editor.record.shortcutReset, "Ctrl+1");
        QVERIFY(storeBytes().contains("shortcutReset=Ctrl+1\n"));
    }

    void stored_isReadNatively()
    {
        AppSettings start;
        start.shortcutReset = "Strg+R";
        Editor editor(start);
        QCOMPARE(editor.keyLabel(1)->text(), "Strg+R");
        editor.runToOk();
        QCOMPARE(editor.record.shortcutReset, "Ctrl+R");
    }
};

VELMORA_TEST_MAIN(SettingsDialogNativeKeysTest)
#include "tst_SettingsDialogNativeKeys.moc"
