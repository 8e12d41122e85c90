#include <QDrag>
#include <QListWidget>
#include <QTest>
#include <QWindow>

#include "ControlFixture.h"
#include "Store.h"
#include "TestMain.h"

namespace {

QList<int> shownPresets(const QListWidget &list)
{
    QList<int> presets;
    for (int row = 0; row < list.count(); ++row)
        presets.append(list.item(row)->data(Qt::UserRole).toInt());
    return presets;
}

// A point in the list, in the coordinates of its window.
QPoint inWindow(const QListWidget &list, const QPoint &point)
{
    return list.viewport()->mapTo(list.window(), point);
}

// Presses on the item of the row, drags it to the point and lets it go there. The drag has
// an event loop of its own: what follows the moves that start it is sent from a timer.
void drag(QListWidget &list, int row, const QPoint &target)
{
    QWindow *window = list.window()->windowHandle();
    const QPoint start = inWindow(list, list.visualItemRect(list.item(row)).center());
    const QPoint end = inWindow(list, target);
    const QPoint towards((end.x() < start.x() ? -1 : 1) * (QApplication::startDragDistance() + 4),
                         0);

    QTimer goOn;
    int step = 0;
    QObject::connect(&goOn, &QTimer::timeout, &goOn, [&] {
        if (!list.findChild<QDrag *>())
            return;
        if (step++ < 2) {
            QTest::mouseMove(window, end + QPoint(0, step));
            return;
        }
        goOn.stop();
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, end);
    });
    goOn.start(0);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, start);
    QTest::mouseMove(window, start + towards / 4);
    QTest::mouseMove(window, start + towards);
    QTRY_VERIFY(!goOn.isActive());
}

} // namespace

// Chips moved by the mouse, as a person does.
class ControlWindowPresetDragTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void dragToTheFront_isStored()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(QTest::qWaitForWindowExposed(fixture.window.get()));
        auto *list = fixture.named<QListWidget>("presetList");
        const QRect first = list->visualItemRect(list->item(0));
        drag(*list, 2, QPoint(first.left() + 1, first.center().y()));
        const QList<int> expected{900, 300, 600, 1800};
        QCOMPARE(shownPresets(*list), expected);
        QCOMPARE(fixture.settings.presets, expected);
        QCOMPARE(loadedSettings().presets, expected);
        QCOMPARE(fixture.engine.remaining(), 300); // a drag loads nothing
    }

    void dragToTheEnd_isStored()
    {
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(QTest::qWaitForWindowExposed(fixture.window.get()));
        auto *list = fixture.named<QListWidget>("presetList");
        const QRect last = list->visualItemRect(list->item(3));
        drag(*list, 0, QPoint(last.right() - 1, last.center().y()));
        const QList<int> expected{600, 900, 1800, 300};
        QCOMPARE(shownPresets(*list), expected);
        QCOMPARE(loadedSettings().presets, expected);
    }
};

int main(int argc, char *argv[])
{
    // The offscreen platform gives up every drag at once; this one has Qt's own.
    if (qEnvironmentVariable("QT_QPA_PLATFORM", "offscreen").startsWith("offscreen"))
        qputenv("QT_QPA_PLATFORM", "minimal");
    return runTest(argc, argv, TestPlatform(), [] { return new ControlWindowPresetDragTest; });
}
#include "tst_ControlWindowPresetDrag.moc"
