#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "SettingsDialog.h"
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
            return QStringLiteral("Strg");
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
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.showPage(QStringLiteral("Shortcuts"));
            QTest::mouseClick(view.setKeyButton(1), Qt::LeftButton);
            QTest::keyClick(dialog.windowHandle(), Qt::Key_1, Qt::ControlModifier);
            QCOMPARE(view.keyLabel(1)->text(), QStringLiteral("Strg+1"));
            view.okButton()->click();
        });
        QCOMPARE(record.shortcutReset, QStringLiteral("Ctrl+1"));
        QVERIFY(storeBytes().contains("shortcutReset=Ctrl+1\n"));
    }

    void stored_isReadNatively()
    {
        AppSettings record;
        record.shortcutReset = QStringLiteral("Strg+R");
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        QCOMPARE(view.keyLabel(1)->text(), QStringLiteral("Strg+R"));
        execWith(dialog, [&] { view.okButton()->click(); });
        QCOMPARE(record.shortcutReset, QStringLiteral("Ctrl+R"));
    }
};

VELMORA_TEST_MAIN(SettingsDialogNativeKeysTest)
#include "tst_SettingsDialogNativeKeys.moc"
