#include <QMap>
#include <QMessageBox>
#include <QTabWidget>
#include <QTest>

#include "AboutDialog.h"
#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "Restyle.h"
#include "SettingsDialog.h"
#include "TestMain.h"

namespace {

/// All windows of the program at once, as they are only with dialogs that do not block.
class Windows
{
public:
    Windows()
        : settingsDialog(&fixture.settings, fixture.window.get())
        , aboutDialog(fixture.window.get())
        , messageBox(QMessageBox::Information, "Velmora", "<b>A newer one</b>", QMessageBox::Ok,
                     fixture.window.get())
    {
        fixture.settings.bgColor = Qt::blue;
        fixture.output.setViewMode(0); // the clock would change by itself
        fixture.show();
        fixture.button("Preview")->click();
        for (QDialog *dialog : QList<QDialog *>{&settingsDialog, &aboutDialog, &messageBox}) {
            dialog->setModal(false);
            dialog->show();
        }
    }

    /// What each shows, by its title or its tab's.
    QMap<QString, QImage> pictures()
    {
        QCoreApplication::processEvents();
        runOut(fixture.previewTimer());
        QMap<QString, QImage> seen;
        const QWidgetList others{fixture.window.get(), previewWindow(), &aboutDialog, &messageBox};
        for (QWidget *window : others)
            seen.insert(window->windowTitle(), window->grab().toImage());
        auto *tabs = settingsDialog.findChild<QTabWidget *>();
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            seen.insert(tabs->tabText(i), settingsDialog.grab().toImage());
        }
        return seen;
    }

private:
    ControlFixture fixture;
    SettingsDialog settingsDialog;
    AboutDialog aboutDialog;
    QMessageBox messageBox;
};

} // namespace

/// The desktop's theme, the style or the application's style sheet changes while the operator
/// looks at a window.
class ControlWindowRestyledTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setPalette(QPalette()); }

    void everyWindow_looksTheSame_data() { addRestylings(); }

    void everyWindow_looksTheSame()
    {
        QFETCH(QString, style);
        QFETCH(Restyling, restyle);
        QApplication::setStyle(style);
        Windows windows;
        const QMap<QString, QImage> before = windows.pictures();
        QCOMPARE(before.size(), 9);
        restyle();
        const QMap<QString, QImage> after = windows.pictures();
        for (auto it = before.cbegin(); it != before.cend(); ++it)
            QVERIFY2(after.value(it.key()) == it.value(), qPrintable(it.key()));
    }
};

VELMORA_TEST_MAIN(ControlWindowRestyledTest, twoScreens())
#include "tst_ControlWindowRestyled.moc"
