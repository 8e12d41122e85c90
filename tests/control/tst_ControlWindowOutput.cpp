#include <QTest>

#include "ControlFixture.h"
#include "PreviewWindow.h"
#include "TestMain.h"

namespace {

const QString showText = QStringLiteral("▶  Show Output Window");
const QString hideText = QStringLiteral("■  Hide Output Window");

} // namespace

/// The Output window's button with a single screen, and the end of the program.
class ControlWindowOutputTest : public QObject
{
    Q_OBJECT

private slots:
    // At start it offers to show what is shown: toggleOutput() alone changes the text.
    void toggle_hidesAndShowsAnOrdinaryWindow()
    {
        ControlFixture fixture;
        fixture.show();
        QAbstractButton *toggle = fixture.named<QPushButton>("outputToggleBtn");
        QVERIFY(fixture.output.isVisible());
        QCOMPARE(toggle->text(), showText);
        fixture.output.resize(300, 200);
        toggle->click();
        QVERIFY(!fixture.output.isVisible());
        QCOMPARE(toggle->text(), showText);
        toggle->click();
        QVERIFY(fixture.output.isVisible());
        QVERIFY(!fixture.output.isFullScreen());
        QVERIFY(!fixture.output.windowFlags().testFlag(Qt::FramelessWindowHint));
        QCOMPARE(fixture.output.size(), QSize(800, 500));
        QCOMPARE(toggle->text(), hideText);
        fixture.window->toggleOutput(); // by no click
        QVERIFY(!fixture.output.isVisible());
        QCOMPARE(toggle->text(), showText);
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
        QCOMPARE(fixture.outputFigure()->text(), "04:59");
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

    void closing_endsTheProgramOnceThePreviewIsGone_data()
    {
        QTest::addColumn<bool>("closed");
        QTest::newRow("closed by the operator") << true;
        QTest::newRow("closed by its refresh") << false;
    }

    // The preview stays open at first. A process without a window would be left behind, if its end
    // did not count as the last window's.
    void closing_endsTheProgramOnceThePreviewIsGone()
    {
        QFETCH(bool, closed);
        ControlFixture fixture;
        fixture.show();
        fixture.button("Preview")->click();
        QWidget *preview = previewWindow();
        bool stayedOpen = false;
        QTimer::singleShot(0, qApp, [&] {
            fixture.window->close();
            stayedOpen = preview->isVisible();
            if (closed)
                preview->close();
        });
        QTimer::singleShot(5000, preview, [] { QCoreApplication::exit(99); }); // it is stuck
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(stayedOpen);
        QVERIFY(!preview->isVisible());
    }

    void eventFilter_filtersNothing()
    {
        const ControlFixture fixture;
        QObject *filter = fixture.window.get();
        for (const auto type :
             {QEvent::KeyPress, QEvent::KeyRelease, QEvent::ShortcutOverride,
              QEvent::MouseButtonPress, QEvent::FocusIn, QEvent::Close, QEvent::Timer}) {
            QEvent event(type);
            QVERIFY(!filter->eventFilter(fixture.figure(), &event));
            QVERIFY(!filter->eventFilter(filter, &event));
        }
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
