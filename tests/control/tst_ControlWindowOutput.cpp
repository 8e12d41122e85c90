#include <QScreen>
#include <QTest>

#include "CloseCounter.h"
#include "ControlFixture.h"
#include "TestMain.h"

namespace {

const QString showText = QStringLiteral("▶  Show Output Window");
const QString hideText = QStringLiteral("■  Hide Output Window");

// Ends the program's event loop with this when it does not end by itself.
constexpr int stuck = 99;

// Runs the event loop as the entry routine does and calls the action in it.
template<typename Action>
int runProgram(Action action)
{
    QTimer::singleShot(0, qApp, action);
    QTimer guard;
    guard.setSingleShot(true);
    QObject::connect(&guard, &QTimer::timeout, qApp, [] { QCoreApplication::exit(stuck); });
    guard.start(5000);
    return QApplication::exec();
}

} // namespace

// The Output window's button with a single screen, and the end of the program.
class ControlWindowOutputTest : public QObject
{
    Q_OBJECT

private slots:
    // Although the window is shown: toggleOutput() alone changes the text.
    void toggleButton_saysShowAtStart()
    {
        ControlFixture fixture;
        fixture.show();
        QVERIFY(fixture.output.isVisible());
        QVERIFY(fixture.button(showText));
    }

    void toggle_whileVisible_hides()
    {
        ControlFixture fixture;
        fixture.show();
        QAbstractButton *toggle = fixture.named<QPushButton>("outputToggleBtn");
        toggle->click();
        QVERIFY(!fixture.output.isVisible());
        QCOMPARE(toggle->text(), showText);
    }

    void toggle_whileHidden_showsAnOrdinaryWindow()
    {
        ControlFixture fixture;
        fixture.showControl();
        QAbstractButton *toggle = fixture.named<QPushButton>("outputToggleBtn");
        toggle->click();
        QVERIFY(fixture.output.isVisible());
        QVERIFY(!fixture.output.isFullScreen());
        QCOMPARE(fixture.output.size(), QSize(800, 500));
        QVERIFY(!fixture.output.windowFlags().testFlag(Qt::FramelessWindowHint));
        QCOMPARE(toggle->text(), hideText);
    }

    void toggle_again_restoresTheOrdinarySize()
    {
        ControlFixture fixture;
        fixture.show();
        fixture.output.resize(300, 200);
        fixture.window->toggleOutput();
        QCOMPARE(fixture.output.size(), QSize(300, 200));
        fixture.window->toggleOutput();
        QCOMPARE(fixture.output.size(), QSize(800, 500));
        QVERIFY(fixture.button(hideText));
    }

    // As after the second screen was unplugged.
    void toggle_afterALostFullScreen_showsAnOrdinaryWindow()
    {
        ControlFixture fixture;
        fixture.showControl();
        fixture.output.setGeometry(QRect(0, 0, 1920, 1080));
        fixture.output.showFullScreen();
        fixture.window->toggleOutput();
        QVERIFY(!fixture.output.isVisible());
        fixture.window->toggleOutput();
        QVERIFY(fixture.output.isVisible());
        QVERIFY(!fixture.output.isFullScreen());
        QCOMPARE(fixture.output.windowState() & ~Qt::WindowActive, Qt::WindowNoState);
        QCOMPARE(fixture.output.size(), QSize(800, 500));
    }

    void toggle_leavesTheCountAlone()
    {
        ControlFixture fixture;
        fixture.show();
        fixture.engine.start();
        fixture.window->toggleOutput();
        passSecond(fixture.engine);
        fixture.window->toggleOutput();
        QVERIFY(fixture.engine.isRunning());
        QCOMPARE(fixture.outputFigure()->text(), QStringLiteral("04:59"));
    }

    void toggleSlot_doesAsTheButton()
    {
        ControlFixture fixture;
        fixture.show();
        fixture.window->toggleOutput();
        QVERIFY(!fixture.output.isVisible());
        QVERIFY(fixture.button(showText));
        fixture.window->toggleOutput();
        QVERIFY(fixture.output.isVisible());
        QVERIFY(fixture.button(hideText));
    }

    void closing_closesTheOutput()
    {
        ControlFixture fixture;
        fixture.show();
        const CloseCounter closes(&fixture.output);
        QVERIFY(fixture.window->close());
        QVERIFY(!fixture.window->isVisible());
        QVERIFY(!fixture.output.isVisible());
        QCOMPARE(closes.count, 1); // and it is not only hidden
    }

    void closing_endsTheProgram_data()
    {
        QTest::addColumn<bool>("outputShown");
        QTest::addColumn<bool>("previewShown");
        QTest::addColumn<bool>("running");
        QTest::newRow("both windows") << true << false << false;
        QTest::newRow("both windows, running") << true << false << true;
        QTest::newRow("Control window alone") << false << false << false;
        QTest::newRow("with a preview") << true << true << false;
        QTest::newRow("with a preview whose Output window is hidden") << false << true << false;
    }

    // Whatever is open: a process without a window would be left behind otherwise.
    void closing_endsTheProgram()
    {
        QFETCH(bool, outputShown);
        QFETCH(bool, previewShown);
        QFETCH(bool, running);
        ControlFixture fixture;
        fixture.show();
        if (running)
            fixture.engine.start();
        if (previewShown)
            fixture.button("Preview")->click();
        if (!outputShown)
            fixture.window->toggleOutput();
        QCOMPARE(runProgram([&fixture] { fixture.window->close(); }), 0);
        QVERIFY(!findWindow("Output Preview"));
    }

    void closing_thePreviewLast_endsTheProgram()
    {
        ControlFixture fixture;
        fixture.show();
        fixture.button("Preview")->click();
        QWidget *preview = findWindow("Output Preview");
        QVERIFY(preview);
        bool stillThere = false;
        const int status = runProgram([&] {
            fixture.window->close();
            stillThere = preview->isVisible();
            preview->close();
        });
        QCOMPARE(status, 0);
        QVERIFY(stillThere);
    }

    void eventFilter_filtersNothing_data()
    {
        QTest::addColumn<int>("type");
        QTest::newRow("key press") << int(QEvent::KeyPress);
        QTest::newRow("key release") << int(QEvent::KeyRelease);
        QTest::newRow("shortcut override") << int(QEvent::ShortcutOverride);
        QTest::newRow("mouse press") << int(QEvent::MouseButtonPress);
        QTest::newRow("focus") << int(QEvent::FocusIn);
        QTest::newRow("close") << int(QEvent::Close);
        QTest::newRow("timer") << int(QEvent::Timer);
    }

    void eventFilter_filtersNothing()
    {
        QFETCH(int, type);
        const ControlFixture fixture;
        QEvent event{QEvent::Type(type)};
        QObject *filter = fixture.window.get();
        QVERIFY(!filter->eventFilter(fixture.figure(), &event));
        QVERIFY(!filter->eventFilter(filter, &event));
    }

    void keyPress_isNotHandled()
    {
        ControlFixture fixture;
        for (const int key : {Qt::Key_Space, Qt::Key_R, Qt::Key_Escape, Qt::Key_Return}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            event.accept();
            // Past the shortcuts, straight to the window.
            static_cast<QObject *>(fixture.window.get())->event(&event);
            QVERIFY(!event.isAccepted());
        }
        QVERIFY(!fixture.engine.isRunning());
    }
};

VELMORA_TEST_MAIN(ControlWindowOutputTest)
#include "tst_ControlWindowOutput.moc"
