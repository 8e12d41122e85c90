#include <QListWidget>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

namespace {

// The colour of the window's picture at a point of one of its widgets.
QColor pixel(const ControlFixture &fixture, const QWidget &widget, const QPoint &point)
{
    const QImage picture = fixture.window->grab().toImage();
    return picture.pixelColor(widget.mapTo(fixture.window.get(), point));
}

// In the middle of the upper edge, where a rounded border has its full colour.
QColor borderColor(const ControlFixture &fixture, const QWidget &widget)
{
    return pixel(fixture, widget, QPoint(widget.width() / 2, 0));
}

// Inside the border, beside the text.
QColor groundColor(const ControlFixture &fixture, const QWidget &widget)
{
    return pixel(fixture, widget, QPoint(5, 4));
}

} // namespace

// What the application's style sheet, the inline ones and the fixed sizes give together.
class ControlWindowLookTest : public QObject
{
    Q_OBJECT

private slots:
    void scrollContent_showsItsHooksByTheirBorders_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("border");
        QTest::newRow("start") << "▶  START" << QColor("#2a8c2a");
        QTest::newRow("pause") << "⏸  PAUSE" << QColor("#8c7000");
        QTest::newRow("reset") << "↺  RESET" << QColor("#8c2a2a");
        QTest::newRow("set") << "Set" << QColor("#2a9c4a");
        QTest::newRow("add") << "Add to Preset" << QColor("#444444");
        QTest::newRow("plus") << "+1 min" << QColor("#444444");
        QTest::newRow("minus") << "−1 min" << QColor("#444444");
    }

    // The content's own sheet sets the ground of every button in it, so only the borders differ.
    void scrollContent_showsItsHooksByTheirBorders()
    {
        QFETCH(QString, text);
        ControlFixture fixture;
        fixture.showControl();
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        QTEST(borderColor(fixture, *button), "border");
        QCOMPARE(groundColor(fixture, *button), QColor("#1c1c1c"));
    }

    void outsideTheScrollContent_aHookShowsItsGround_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("border");
        QTest::addColumn<QColor>("ground");
        QTest::newRow("output") << "▶  Show Output Window" << QColor("#2a5c8c")
                                << QColor("#1a3a5c");
        QTest::newRow("preview") << "Preview" << QColor("#444444") << QColor("#2b2b2b");
        QTest::newRow("settings") << "⚙" << QColor("#444444") << QColor("#1c1c1c");
    }

    void outsideTheScrollContent_aHookShowsItsGround()
    {
        QFETCH(QString, text);
        ControlFixture fixture;
        fixture.showControl();
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        QTEST(borderColor(fixture, *button), "border");
        QTEST(groundColor(fixture, *button), "ground");
    }

    void checkedButton_showsItsBorder_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("border");
        QTest::newRow("countdown") << "▼  Countdown" << QColor("#2a9c4a");
        QTest::newRow("count up") << "▲  Count Up" << QColor("#444444");
        QTest::newRow("timer") << "⏱  Timer" << QColor("#444444");
        QTest::newRow("clock") << "🕐  Clock" << QColor("#444444");
        QTest::newRow("both") << "⊞  Both" << QColor("#2a9c4a");
    }

    void checkedButton_showsItsBorder()
    {
        QFETCH(QString, text);
        ControlFixture fixture;
        fixture.showControl();
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        QTEST(borderColor(fixture, *button), "border");
        QCOMPARE(groundColor(fixture, *button), QColor("#1c1c1c"));
    }

    // 28 pixels of minimum height, twice 6 of padding and twice 1 of border beat a fixed height
    // of 30, 36 or 38; only where the button's own sheet takes them away is it as fixed.
    void shownSizes_followTheStyleSheetsMinima_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width"); // -1: as the window gives
        QTest::addColumn<int>("height");
        QTest::newRow("settings") << "⚙" << 66 << 42;
        QTest::newRow("start") << "▶  START" << -1 << 42;
        QTest::newRow("plus") << "+1 min" << -1 << 42;
        QTest::newRow("minus") << "−1 min" << -1 << 42;
        QTest::newRow("set") << "Set" << 60 << 32;
        QTest::newRow("add") << "Add to Preset" << 100 << 32;
        QTest::newRow("output") << "▶  Show Output Window" << -1 << 42;
        QTest::newRow("preview") << "Preview" << 100 << 42;
    }

    void shownSizes_followTheStyleSheetsMinima()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        ControlFixture fixture;
        fixture.showControl();
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        QTEST(button->height(), "height");
        if (width >= 0)
            QCOMPARE(button->width(), width);
    }

    // The application's sheet outweighs the fixed 32; the row stays at 32 and cuts them off.
    void stepperButtons_areHigherThanTheirFixedHeight()
    {
        ControlFixture fixture;
        fixture.showControl();
        int stepButtons = 0;
        const auto buttons = fixture.window->findChildren<QPushButton *>();
        for (const QPushButton *button : buttons) {
            if (button->text() != QStringLiteral("◀") && button->text() != QStringLiteral("▶"))
                continue;
            ++stepButtons;
            QCOMPARE(button->size(), QSize(28, 34));
            QCOMPARE(button->parentWidget()->height(), 32);
        }
        QCOMPARE(stepButtons, 4);
    }

    void adjustButtons_showTheirLowerBorders_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("plus") << "+1 min";
        QTest::newRow("minus") << "−1 min";
    }

    // They are higher than their row: the line under it may not cover them.
    void adjustButtons_showTheirLowerBorders()
    {
        QFETCH(QString, text);
        ControlFixture fixture;
        fixture.showControl();
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        const QPoint lowerEdge(button->width() / 2, button->height() - 1);
        QCOMPARE(pixel(fixture, *button, lowerEdge), QColor("#444444"));
    }

    void figure_keepsItsHeight()
    {
        ControlFixture fixture;
        fixture.showControl();
        QCOMPARE(fixture.figure()->height(), 80);
    }

    void figure_isDrawnInItsColor()
    {
        AppSettings record;
        record.timerColorNormal = QColor("#123456");
        ControlFixture fixture(record);
        fixture.showControl();
        const QImage picture = fixture.figure()->grab().toImage();
        bool found = false;
        for (int y = 0; y < picture.height() && !found; ++y) {
            for (int x = 0; x < picture.width() && !found; ++x)
                found = picture.pixelColor(x, y) == QColor("#123456");
        }
        QVERIFY(found);
    }

    void figure_vanishesInTheHiddenPhase()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.engine.setDuration(0);
        runOut(fixture.blinkTimer());
        const QImage picture = fixture.figure()->grab().toImage();
        QImage empty(picture.size(), picture.format());
        empty.fill(QColor("#1c1c1c"));
        QCOMPARE(picture, empty);
    }

    void smallestWindow_scrollsVertically()
    {
        ControlFixture fixture;
        fixture.window->resize(480, 420);
        fixture.window->show();
        QCOMPARE(fixture.window->size(), QSize(480, 420));
        const auto *firstItem = fixture.button(QStringLiteral("▼  Countdown"));
        const auto *lastItem = fixture.button(QStringLiteral("Test"));
        QVERIFY(!firstItem->visibleRegion().isEmpty());
        QVERIFY(lastItem->visibleRegion().isEmpty());
        // Nothing is cut off at the right.
        QCOMPARE(lastItem->window(), fixture.window.get());
        QVERIFY(lastItem->mapTo(fixture.window.get(), QPoint(lastItem->width(), 0)).x()
                <= 480 - 12);
    }

    void longSoundFileName_leavesItsButtonsInTheWindow()
    {
        AppSettings record;
        record.soundFilePath = QStringLiteral("/music/%1.wav").arg(QString(200, 'W'));
        ControlFixture fixture(record);
        fixture.window->resize(480, 420);
        fixture.window->show();
        QCOMPARE(fixture.window->size(), QSize(480, 420));
        for (const QString &text : {QStringLiteral("Browse…"), QStringLiteral("Test")}) {
            const QAbstractButton *button = fixture.button(text);
            QVERIFY(button);
            const int right = button->mapTo(fixture.window.get(), QPoint(button->width(), 0)).x();
            QVERIFY2(right <= 480 - 12, qPrintable(QString::number(right)));
        }
    }
};

VELMORA_TEST_MAIN(ControlWindowLookTest)
#include "tst_ControlWindowLook.moc"
