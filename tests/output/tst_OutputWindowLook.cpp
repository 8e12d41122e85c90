#include <climits>
#include <memory>

#include <QTest>

#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

namespace {

const QString normal = QStringLiteral("#010203");
const QString warning = QStringLiteral("#aabbcc");
const QString critical = QStringLiteral("#fedcba");

} // namespace

/// The style sheets of the parts, which have colour and size, and the bar's value.
class OutputWindowLookTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        settings = AppSettings();
        window = std::make_unique<OutputWindow>(&settings);
        setHeight(*window, 1080);
    }

    void cleanup() { window.reset(); }

    void colour_followsTheThreshold_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("color");
        QTest::newRow("above it") << 61 << normal;
        QTest::newRow("at it") << 60 << warning;
        QTest::newRow("last second") << 1 << warning;
        QTest::newRow("zero") << 0 << critical;
        QTest::newRow("below zero") << -5 << critical;
    }

    // The count direction is ignored, unlike by the Control window's figure, which is in the normal
    // colour while counting up.
    void colour_followsTheThreshold()
    {
        QFETCH(int, seconds);
        QFETCH(QString, color);
        settings.timerColorNormal = QColor(normal);
        settings.timerColorWarning = QColor(warning);
        settings.timerColorCritical = QColor(critical);
        for (const bool countUp : {false, true}) {
            window->setCountUp(countUp);
            window->onTimerTick(seconds);
            verifyStyles(figureStyle(color, 150), barStyle(color));
        }
        settings.warningThreshold = seconds; // not seen before the refresh
        verifyStyles(figureStyle(color, 150), barStyle(color));
        window->refreshSettings();
        const QString now = seconds < 1 ? critical : warning;
        verifyStyles(figureStyle(now, 150), barStyle(now));
    }

    void refreshSettings_readsEveryColourAndSize()
    {
        verifyStyles(figureStyle("#00cc00", 150), barStyle("#00cc00"), figureStyle("#ffffff", 80),
                     messageStyle("#ffff00", 36));
        settings.timerColorNormal = QColor(0x10, 0x20, 0x30, 10); // written without its alpha
        settings.clockColor = QColor("#405060");
        settings.messageColor = QColor("#708090");
        settings.timerFontSize = 550;
        settings.clockFontSize = 300;
        settings.messageFontSize = 150;
        window->onTimerTick(200); // reads the colours, but not the sizes
        verifyStyles(figureStyle("#102030", 150), barStyle("#102030"), figureStyle("#ffffff", 80),
                     messageStyle("#ffff00", 36));
        window->refreshSettings();
        verifyStyles(figureStyle("#102030", 550), barStyle("#102030"), figureStyle("#405060", 300),
                     messageStyle("#708090", 150));
    }

    // Such a colour comes from a store with a text that names none.
    void invalidColour_isWrittenAsBlack()
    {
        for (QColor *color : {&settings.bgColor, &settings.timerColorNormal, &settings.clockColor,
                              &settings.messageColor})
            *color = QColor();
        window->show();
        setHeight(*window, 1080);
        verifyStyles(figureStyle("#000000", 150), barStyle("#000000"), figureStyle("#000000", 80),
                     messageStyle("#000000", 36));
        window->tickBlink();
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle("#000000", 150));
        QVERIFY(!window->grab().isNull());
    }

    void fonts_followTheHeight_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<QList<int>>("sizes"); // of the record: figure, clock, message
        QTest::addColumn<QList<int>>("pixels");
        using Sizes = QList<int>;
        const Sizes usual{150, 80, 36};
        const Sizes floors{12, 10, 8};
        QTest::newRow("reference height") << 1080 << usual << usual;
        QTest::newRow("half") << 540 << usual << Sizes{75, 40, 18};
        QTest::newRow("double") << 2160 << usual << Sizes{300, 160, 72};
        QTest::newRow("ordinary window") << 500 << usual << Sizes{69, 37, 17};
        QTest::newRow("50 pixels: floors") << 50 << usual << floors;
        QTest::newRow("1 pixel: floors") << 1 << Sizes{550, 300, 150} << floors;
        QTest::newRow("halves go up") << 540 << Sizes{149, 77, 33} << Sizes{75, 39, 17};
        QTest::newRow("halves of even numbers") << 540 << Sizes{145, 81, 37} << Sizes{73, 41, 19};
        QTest::newRow("below a half") << 1079 << usual << usual;
        QTest::newRow("just at the floors") << 1080 << floors << floors;
        QTest::newRow("just above the floors") << 1080 << Sizes{13, 11, 9} << Sizes{13, 11, 9};
        QTest::newRow("a record that was never loaded") << 1080 << Sizes{-40, 0, -1} << floors;
    }

    // The width plays no part, and without any height they stay as they were.
    void fonts_followTheHeight()
    {
        QFETCH(int, height);
        QFETCH(QList<int>, sizes);
        QFETCH(QList<int>, pixels);
        settings.timerFontSize = sizes.at(0);
        settings.clockFontSize = sizes.at(1);
        settings.messageFontSize = sizes.at(2);
        for (const QSize size : {QSize(3000, height), QSize(100, height), QSize(800, 0)}) {
            window->resize(size);
            window->refreshSettings();
            verifyStyles(figureStyle("#00cc00", pixels.at(0)), barStyle("#00cc00"),
                         figureStyle("#ffffff", pixels.at(1)),
                         messageStyle("#ffff00", pixels.at(2)));
        }
    }

    void showAndResize_scaleTheFonts()
    {
        window->resize(800, 540);
        window->show();
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle("#00cc00", 75));
        window->resize(800, 270);
        QTRY_COMPARE(figureLabel(*window)->styleSheet(), figureStyle("#00cc00", 38));
        window->hide();
        settings.timerFontSize = 300; // not passed on to the window; its next show reads it
        window->show();
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle("#00cc00", 75));
    }

    void bar_hasItsValue_data()
    {
        QTest::addColumn<int>("total");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<int>("value");
        QTest::newRow("full") << 300 << 300 << 1000;
        QTest::newRow("half") << 300 << 150 << 500;
        QTest::newRow("zero") << 300 << 0 << 0;
        QTest::newRow("overtime") << 300 << -20 << 0;
        QTest::newRow("counted up beyond the total") << 300 << 450 << 1000;
        QTest::newRow("rounded down") << 3 << 1 << 333;
        QTest::newRow("rounded up") << 3 << 2 << 667;
        QTest::newRow("half of a step goes up") << 2000 << 1 << 1;
        QTest::newRow("half above an even step goes up") << 2000 << 5 << 3;
        QTest::newRow("below half of a step") << 2001 << 1 << 0;
        QTest::newRow("total zero counts as one second") << 0 << 1 << 1000;
        QTest::newRow("total zero at zero") << 0 << 0 << 0;
        QTest::newRow("negative total counts as one second") << -300 << 1 << 1000;
        QTest::newRow("smallest total") << INT_MIN << 1 << 1000;
        QTest::newRow("longest count over the shortest total") << 1 << INT_MAX << 1000;
        QTest::newRow("smallest count") << 300 << INT_MIN << 0;
        QTest::newRow("largest count and total") << INT_MAX << INT_MAX << 1000;
        QTest::newRow("half of the largest total") << INT_MAX << 1073741824 << 500;
    }

    void bar_hasItsValue()
    {
        QFETCH(int, total);
        QFETCH(int, seconds);
        // From the middle: the bar leaves alone what is out of its range, and would stay at its
        // end.
        window->onTimerTick(150);
        QCOMPARE(progressBar(*window)->value(), 500); // of 300, until another total is set
        window->setTotalSeconds(total);
        window->onTimerTick(seconds);
        QTEST(progressBar(*window)->value(), "value");
    }

    void setTotalSeconds_movesTheBarAtOnce()
    {
        window->setTotalSeconds(600); // the count stands at 300
        QCOMPARE(progressBar(*window)->value(), 500);
    }

private:
    /// Without a clock's and a message's sheet, these are not looked at.
    void verifyStyles(const QString &figure, const QString &bar, const QString &clock = {},
                      const QString &message = {}) const
    {
        QCOMPARE(figureLabel(*window)->styleSheet(), figure);
        QCOMPARE(progressBar(*window)->styleSheet(), bar);
        if (!clock.isEmpty())
            QCOMPARE(clockLabel(*window)->styleSheet(), clock);
        if (!message.isEmpty())
            QCOMPARE(messageLabel(*window)->styleSheet(), message);
    }

    AppSettings settings;
    std::unique_ptr<OutputWindow> window;
};

VELMORA_TEST_MAIN(OutputWindowLookTest)
#include "tst_OutputWindowLook.moc"
