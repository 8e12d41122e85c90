#include <limits>
#include <memory>

#include <QMetaMethod>
#include <QPointer>
#include <QTest>
#include <QVBoxLayout>

#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

class OutputWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void metaObject_hasTheFiveSlotsInOrder()
    {
        QStringList methods;
        const QMetaObject &meta = OutputWindow::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
            methods += QString::fromLatin1(meta.method(i).methodSignature());
        }
        const QStringList expected{"onTimerTick(int)", "refreshSettings()", "setCountUp(bool)",
                                   "tickClock()", "tickBlink()"};
        QCOMPARE(methods, expected);
    }

    void fresh_isATopLevelWindowWithItsTitle()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        QVERIFY(window.isWindow());
        QVERIFY(!window.parent());
        QCOMPARE(window.windowTitle(), QStringLiteral("Velmora \u2014 Output"));
        QVERIFY(!window.testAttribute(Qt::WA_DeleteOnClose));
        QVERIFY(!window.windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(!window.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    }

    void fresh_isHidden()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        QVERIFY(!window.isVisible());
    }

    void parent_isPassedOn()
    {
        const AppSettings settings;
        QWidget parent;
        const auto *window = new OutputWindow(&settings, &parent);
        QCOMPARE(window->parentWidget(), &parent);
        QVERIFY(!window->isWindow()); // no window flag of its own
    }

    void fresh_showsFiveMinutesInTheNormalColour()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        setHeight(window, 1080);
        QCOMPARE(figureLabel(window)->text(), QStringLiteral("05:00"));
        QCOMPARE(figureLabel(window)->styleSheet(), figureStyle("#00cc00", 150));
    }

    void fresh_barIsFull()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        QCOMPARE(progressBar(window)->value(), 1000);
    }

    void fresh_showsFigureAndClock()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        QVERIFY(figureLabel(window)->isVisibleTo(&window));
        QVERIFY(clockLabel(window)->isVisibleTo(&window));
    }

    void fresh_hasNoMessage()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        QCOMPARE(messageLabel(window)->text(), QString());
    }

    void labels_areCentredAndDoNotWrap()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        for (const QLabel *label :
             {figureLabel(window), clockLabel(window), messageLabel(window)}) {
            QCOMPARE(label->alignment(), Qt::Alignment(Qt::AlignCenter));
            QVERIFY(!label->wordWrap());
        }
    }

    void bar_isTwentyHighWithoutText()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        const QProgressBar *bar = progressBar(window);
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 1000);
        QVERIFY(!bar->isTextVisible());
        QCOMPARE(bar->minimumHeight(), 20);
        QCOMPARE(bar->maximumHeight(), 20);
    }

    void windowLayout_hasItsMarginsAndParts()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        const auto *layout = qobject_cast<const QVBoxLayout *>(window.layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(30, 20, 30, 14));
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 4);
        QCOMPARE(layout->stretch(0), 1);
        QCOMPARE(layout->stretch(1), 0);
        QVERIFY(layout->itemAt(2)->spacerItem());
        QCOMPARE(layout->itemAt(2)->sizeHint().height(), 8);
        QVERIFY(!layout->itemAt(2)->expandingDirections().testFlag(Qt::Vertical));
        QVERIFY(progressBar(window));
    }

    void figureArea_isTransparentAndKeepsItsLabelsInTheMiddle()
    {
        const AppSettings settings;
        const OutputWindow window(&settings);
        QCOMPARE(figureArea(window)->styleSheet(),
                 QStringLiteral("background-color: transparent;"));
        const auto *layout = qobject_cast<const QVBoxLayout *>(figureArea(window)->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 4);
        QVERIFY(layout->itemAt(0)->spacerItem());
        QCOMPARE(layout->stretch(0), 1);
        QVERIFY(layout->itemAt(3)->spacerItem());
        QCOMPARE(layout->stretch(3), 1);
    }

    void shown_standsFigureClockMessageBarFromTopToBottom()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setMessage("Two minutes left");
        window.resize(800, 500);
        window.show();
        const auto top = [&window](const QWidget *part) {
            return part->mapTo(&window, QPoint()).y();
        };
        QVERIFY(top(figureLabel(window)) < top(clockLabel(window)));
        QVERIFY(top(clockLabel(window)) < top(messageLabel(window)));
        const int messageBottom = top(messageLabel(window)) + messageLabel(window)->height();
        QCOMPARE(progressBar(window)->geometry(), QRect(30, messageBottom + 8, 740, 20));
        QCOMPARE(progressBar(window)->geometry().bottom(), 500 - 14 - 1);
        QCOMPARE(figureArea(window)->geometry().top(), 20);
    }

    void shown_figureAndClockSitInTheVerticalMiddle()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.resize(800, 500);
        window.show();
        const int above = figureLabel(window)->geometry().top();
        const int below =
            figureArea(window)->height() - 1 - clockLabel(window)->geometry().bottom();
        QVERIFY(above > 0);
        QVERIFY2(qAbs(above - below) <= 1, qPrintable(QString::number(above - below)));
        QCOMPARE(clockLabel(window)->geometry().top(),
                 figureLabel(window)->geometry().bottom() + 1);
    }

    void onTimerTick_setsTheFigureText_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero has no sign") << 0 << "00:00";
        QTest::newRow("one second") << 1 << "00:01";
        QTest::newRow("below a minute") << 59 << "00:59";
        QTest::newRow("a minute") << 60 << "01:00";
        QTest::newRow("five minutes") << 300 << "05:00";
        QTest::newRow("below an hour") << 3599 << "59:59";
        QTest::newRow("minutes are not folded into hours") << 5400 << "90:00";
        QTest::newRow("three digits of minutes") << 6000 << "100:00";
        QTest::newRow("999 minutes") << 59940 << "999:00";
        QTest::newRow("one second over") << -1 << "-00:01";
        QTest::newRow("over by more than a minute") << -75 << "-01:15";
        QTest::newRow("over by an hour") << -3600 << "-60:00";
        QTest::newRow("largest") << std::numeric_limits<int>::max() << "35791394:07";
        QTest::newRow("smallest") << std::numeric_limits<int>::min() << "-35791394:08";
    }

    void onTimerTick_setsTheFigureText()
    {
        QFETCH(int, seconds);
        const AppSettings settings;
        OutputWindow window(&settings);
        window.onTimerTick(seconds);
        QTEST(figureLabel(window)->text(), "text");
    }

    void setMessage_showsTheTextAsItIs_data()
    {
        QTest::addColumn<QString>("message");
        QTest::newRow("plain") << "Please wrap up";
        QTest::newRow("blanks around") << "  now  ";
        QTest::newRow("mark-up") << "<b>Fixes</b> & more";
        QTest::newRow("place holder") << "%1 of %2";
        QTest::newRow("two lines") << "one\ntwo";
        QTest::newRow("beyond Latin") << "⏱ 五分";
    }

    // Neither escaped nor forced to plain text: the label draws what looks like mark-up as such.
    void setMessage_showsTheTextAsItIs()
    {
        QFETCH(QString, message);
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setMessage(message);
        QCOMPARE(messageLabel(window)->text(), message);
        QCOMPARE(messageLabel(window)->textFormat(), Qt::AutoText);
    }

    void clearMessage_emptiesTheLine()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setMessage("Please wrap up");
        window.clearMessage();
        QCOMPARE(messageLabel(window)->text(), QString());
    }

    // A line without a message keeps its height, so that figure and clock stay where they are.
    void clearMessage_keepsTheLine()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.resize(800, 500);
        window.show();
        const auto places = [&window] {
            QCoreApplication::processEvents();
            return QList<QRect>{figureArea(window)->geometry(), figureLabel(window)->geometry(),
                                clockLabel(window)->geometry(), messageLabel(window)->geometry()};
        };
        const QList<QRect> before = places();
        QVERIFY(messageLabel(window)->isVisible());
        window.setMessage("Please wrap up");
        QVERIFY(messageLabel(window)->isVisible());
        window.clearMessage();
        QCOMPARE(places(), before);
        QVERIFY(messageLabel(window)->isVisible());
    }

    void message_survivesARefresh()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.setMessage("Please wrap up");
        window.refreshSettings();
        window.onTimerTick(10);
        QCOMPARE(messageLabel(window)->text(), QStringLiteral("Please wrap up"));
    }

    void close_hidesAndKeepsTheWindow()
    {
        const AppSettings settings;
        const auto window = std::make_unique<OutputWindow>(&settings);
        const QPointer<OutputWindow> guard(window.get());
        window->show();
        QVERIFY(window->close());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(guard);
        QVERIFY(!window->isVisible());
        window->show();
        QVERIFY(window->isVisible());
    }

    void closedWindow_keepsFollowing()
    {
        const AppSettings settings;
        OutputWindow window(&settings);
        window.show();
        window.close();
        window.onTimerTick(42);
        window.show();
        QCOMPARE(figureLabel(window)->text(), QStringLiteral("00:42"));
    }

    void settings_areNeverWritten()
    {
        AppSettings settings;
        settings.timerFontSize = 9000; // what it shows is derived from the record, not put into it
        settings.warningThreshold = -3;
        settings.bgImageEnabled = true;
        settings.bgImagePath = "missing.png";
        OutputWindow window(&settings);
        window.show();
        window.onTimerTick(0);
        QCOMPARE(settings.timerFontSize, 9000);
        QCOMPARE(settings.warningThreshold, -3);
        QVERIFY(settings.bgImageEnabled);
        QCOMPARE(settings.bgImagePath, QStringLiteral("missing.png"));
    }
};

VELMORA_TEST_MAIN(OutputWindowTest)
#include "tst_OutputWindow.moc"
