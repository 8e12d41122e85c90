#include <QDrag>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include "AppSettings.h"
#include "DialogView.h"
#include "Modal.h"
#include "Record.h"
#include "SettingsDialog.h"
#include "Store.h"
#include "TestMain.h"

namespace {

QStringList labelsIn(const QListWidget &list)
{
    QStringList labels;
    for (int row = 0; row < list.count(); ++row)
        labels << list.item(row)->text();
    return labels;
}

// Qt's drag is a loop of its own: what follows the first moves is played from it.
// `toTop`: before the first item; else behind the last one.
void drag(QListWidget &list, int row, bool toTop)
{
    QWindow *window = list.window()->windowHandle();
    const auto onWindow = [&list](const QPoint &pos) {
        return list.viewport()->mapTo(list.window(), pos);
    };
    const QRect source = list.visualItemRect(list.item(row));
    const QRect end = list.visualItemRect(list.item(toTop ? 0 : list.count() - 1));
    const QPoint apart(0, (toTop ? -1 : 1) * (QApplication::startDragDistance() + 4));
    const QPoint grip = onWindow(source.center());
    const int edge = toTop ? end.top() + 1 : end.bottom() - 1;
    const QPoint target = onWindow(QPoint(end.center().x(), edge));

    QVERIFY(list.viewport()->rect().contains(end.center().x(), edge));

    QTimer release;
    release.setInterval(0);
    int step = 0;
    QObject::connect(&release, &QTimer::timeout, &release, [&] {
        if (!list.findChild<QDrag *>())
            return;
        switch (step++) {
        case 0:
            QTest::mouseMove(window, target + QPoint(1, 0));
            break;
        case 1:
            QTest::mouseMove(window, target);
            break;
        default:
            release.stop();
            QTest::mouseRelease(window, Qt::LeftButton, {}, target);
        }
    });
    release.start();
    QTest::mousePress(window, Qt::LeftButton, {}, grip);
    QTest::mouseMove(window, grip + apart / 4);
    QTest::mouseMove(window, grip + apart);
    QTRY_VERIFY(!release.isActive());
}

} // namespace

// The presets reordered by the mouse.
class SettingsDialogDraggingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void toTheTop_isStoredByOk()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.showPage(QStringLiteral("Timer"));
            drag(*view.presets(), 2, true);
            QCOMPARE(labelsIn(*view.presets()),
                     QStringList({"15 min", "5 min", "10 min", "30 min"}));
            QCOMPARE(record.presets, QList<int>({300, 600, 900, 1800}));
            view.okButton()->click();
        });
        QCOMPARE(record.presets, QList<int>({900, 300, 600, 1800}));
        QCOMPARE(storedLines(), fieldLines(record));
    }

    void toTheEnd_isStoredByOk()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        dialog.resize(500, 800); // high enough for the last preset to be in sight
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.showPage(QStringLiteral("Timer"));
            drag(*view.presets(), 0, false);
            QCOMPARE(labelsIn(*view.presets()),
                     QStringList({"10 min", "15 min", "30 min", "5 min"}));
            view.okButton()->click();
        });
        QCOMPARE(record.presets, QList<int>({600, 900, 1800, 300}));
    }

    void thenCancel_keepsTheOrder()
    {
        AppSettings record;
        SettingsDialog dialog(&record, nullptr);
        const DialogView view(dialog);
        execWith(dialog, [&] {
            view.showPage(QStringLiteral("Timer"));
            drag(*view.presets(), 2, true);
            QCOMPARE(view.presets()->item(0)->text(), QStringLiteral("15 min"));
            view.cancelButton()->click();
        });
        QCOMPARE(record.presets, QList<int>({300, 600, 900, 1800}));
        QVERIFY(!storeExists());
    }
};

int main(int argc, char *argv[])
{
    // The offscreen platform drops every drag at once; this one runs Qt's own.
    if (qEnvironmentVariable("QT_QPA_PLATFORM", "offscreen").startsWith("offscreen"))
        qputenv("QT_QPA_PLATFORM", "minimal");
    return runTest(argc, argv, TestPlatform(), [] { return new SettingsDialogDraggingTest; });
}
#include "tst_SettingsDialogDragging.moc"
