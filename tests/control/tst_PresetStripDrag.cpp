#include <QDrag>
#include <QTest>
#include <QWindow>

#include "ControlFixture.h"
#include "Store.h"
#include "TestMain.h"

namespace {

// Presses on the item of the row, drags it to the point and lets it go there. The drag has
// an event loop of its own: what follows the moves that start it is sent from a timer.
void drag(QListWidget &list, int row, const QPoint &target)
{
    QWindow *window = list.window()->windowHandle();
    const auto inWindow = [&list](const QPoint &point) {
        return list.viewport()->mapTo(list.window(), point);
    };
    const QPoint start = inWindow(list.visualItemRect(list.item(row)).center());
    const QPoint end = inWindow(target);
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

/// Chips moved by the mouse, as the operator does.
class PresetStripDragTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { removeStore(); }

    void drag_isStoredAndLoadsNothing_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("target");
        QTest::addColumn<QList<int>>("order");
        QTest::newRow("to the front") << 2 << 0 << QList<int>{900, 300, 600, 1800};
        QTest::newRow("to the end") << 0 << 3 << QList<int>{600, 900, 1800, 300};
    }

    void drag_isStoredAndLoadsNothing()
    {
        QFETCH(int, row);
        QFETCH(int, target);
        QFETCH(QList<int>, order);
        ControlFixture fixture;
        fixture.showControl();
        QVERIFY(QTest::qWaitForWindowExposed(fixture.window.get()));
        QListWidget *list = fixture.strip();
        const QRect place = list->visualItemRect(list->item(target));
        const int edge = target == 0 ? place.left() + 1 : place.right() - 1;
        drag(*list, row, QPoint(edge, place.center().y()));
        QCOMPARE(fixture.settings.presets, order);
        QCOMPARE(loadedSettings().presets, order);
        QList<int> shown;
        for (int i = 0; i < list->count(); ++i)
            shown.append(list->item(i)->data(Qt::UserRole).toInt());
        QCOMPARE(shown, order);
        QCOMPARE(fixture.engine.remaining(), 300);
    }
};

int main(int argc, char *argv[])
{
    // The offscreen platform gives up every drag at once; this one has Qt's own.
    if (qEnvironmentVariable("QT_QPA_PLATFORM", "offscreen").startsWith("offscreen"))
        qputenv("QT_QPA_PLATFORM", "minimal");
    return runTest(argc, argv, TestPlatform(), [] { return new PresetStripDragTest; });
}
#include "tst_PresetStripDrag.moc"
