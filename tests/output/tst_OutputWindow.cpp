#include <memory>

#include <QMetaMethod>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QVBoxLayout>

#include "Accessible.h"
#include "AppSettings.h"
#include "OutputParts.h"
#include "TestMain.h"

/// The window's parts, their places and texts, and that nothing in them sizes the window.
class OutputWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        settings = AppSettings();
        window = std::make_unique<OutputWindow>(&settings);
        window->resize(800, 500);
    }

    void cleanup() { window.reset(); }

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

    void fresh_isAHiddenTopLevelWindowWithItsTitle()
    {
        QVERIFY(window->isWindow());
        QVERIFY(!window->parent());
        QVERIFY(!window->isVisible());
        QCOMPARE(window->windowTitle(), QStringLiteral("Velmora \u2014 Output"));
        QVERIFY(!window->testAttribute(Qt::WA_DeleteOnClose));
        QVERIFY(!window->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(!window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QWidget parent;
        const auto *child = new OutputWindow(&settings, &parent);
        QCOMPARE(child->parentWidget(), &parent);
        QVERIFY(!child->isWindow()); // no window flag of its own
    }

    void fresh_showsFiveMinutesInTheNormalColour()
    {
        setHeight(*window, 1080);
        QCOMPARE(figureLabel(*window)->text(), QStringLiteral("05:00"));
        QCOMPARE(figureLabel(*window)->styleSheet(), figureStyle("#00cc00", 150));
        QCOMPARE(progressBar(*window)->value(), 1000);
        QCOMPARE(messageLabel(*window)->text(), QString());
    }

    void parts_areCentredAndHaveTheirPlaces()
    {
        for (const QLabel *label :
             {figureLabel(*window), clockLabel(*window), messageLabel(*window)}) {
            QCOMPARE(label->alignment(), Qt::Alignment(Qt::AlignCenter));
            QVERIFY(!label->wordWrap());
        }
        const auto *layout = qobject_cast<const QVBoxLayout *>(window->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(30, 20, 30, 14));
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 4);
        QCOMPARE(layout->stretch(0), 1);
        QCOMPARE(layout->stretch(1), 0);
        QVERIFY(layout->itemAt(2)->spacerItem());
        QCOMPARE(layout->itemAt(2)->sizeHint().height(), 8);
        QVERIFY(!layout->itemAt(2)->expandingDirections().testFlag(Qt::Vertical));

        QCOMPARE(figureArea(*window)->styleSheet(),
                 QStringLiteral("background-color: transparent;"));
        layout = qobject_cast<const QVBoxLayout *>(figureArea(*window)->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->count(), 4);
        QVERIFY(layout->itemAt(0)->spacerItem());
        QCOMPARE(layout->stretch(0), 1);
        QVERIFY(layout->itemAt(3)->spacerItem());
        QCOMPARE(layout->stretch(3), 1);
    }

    void bar_isTwentyHighWithoutText()
    {
        const QProgressBar *bar = progressBar(*window);
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 1000);
        QVERIFY(!bar->isTextVisible());
        QCOMPARE(bar->minimumHeight(), 20);
        QCOMPARE(bar->maximumHeight(), 20);
    }

    void shown_standsFigureClockMessageBarFromTopToBottom()
    {
        window->setMessage("Two minutes left");
        window->show();
        const QRect area = figureArea(*window)->geometry();
        const QRect figure = figureLabel(*window)->geometry();
        const QRect clock = clockLabel(*window)->geometry();
        const QRect message = messageLabel(*window)->geometry();
        QCOMPARE(area.top(), 20);
        QCOMPARE(clock.top(), figure.bottom() + 1);
        QCOMPARE(message.top(), area.bottom() + 1);
        QCOMPARE(progressBar(*window)->geometry(), QRect(30, message.bottom() + 1 + 8, 740, 20));
        QCOMPARE(progressBar(*window)->geometry().bottom(), 500 - 14 - 1);
        const int above = figure.top();
        const int below = area.height() - 1 - clock.bottom();
        QVERIFY(above > 0);
        QVERIFY2(qAbs(above - below) <= 1, qPrintable(QString::number(above - below)));
    }

    // The rest of the figure's text is tested with Figure.
    void onTimerTick_setsTheFigureText()
    {
        window->onTimerTick(5400);
        QCOMPARE(figureLabel(*window)->text(), QStringLiteral("90:00"));
        window->onTimerTick(-75);
        QCOMPARE(figureLabel(*window)->text(), QStringLiteral("-01:15"));
    }

    void message_isShownAsItIsUntilCleared_data()
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
    void message_isShownAsItIsUntilCleared()
    {
        QFETCH(QString, message);
        window->setMessage(message);
        QCOMPARE(messageLabel(*window)->text(), message);
        QCOMPARE(messageLabel(*window)->textFormat(), Qt::AutoText);
        window->refreshSettings();
        window->onTimerTick(10);
        QCOMPARE(messageLabel(*window)->text(), message);
        window->clearMessage();
        QCOMPARE(messageLabel(*window)->text(), QString());
    }

    // A line without a message keeps its height, so that figure and clock stay where they are.
    void clearMessage_keepsTheLine()
    {
        window->show();
        const auto places = [this] {
            QCoreApplication::processEvents();
            return QList<QRect>{figureArea(*window)->geometry(), figureLabel(*window)->geometry(),
                                clockLabel(*window)->geometry(), messageLabel(*window)->geometry()};
        };
        const QList<QRect> before = places();
        window->setMessage("Please wrap up");
        QVERIFY(messageLabel(*window)->isVisible());
        window->clearMessage();
        QCOMPARE(places(), before);
        QVERIFY(messageLabel(*window)->isVisible());
    }

    void closedWindow_isKeptAndFollows()
    {
        window->show();
        QVERIFY(window->close());
        const QPointer<OutputWindow> guard(window.get());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(guard);
        QVERIFY(!window->isVisible());
        window->onTimerTick(42);
        window->show();
        QVERIFY(window->isVisible());
        QCOMPARE(figureLabel(*window)->text(), QStringLiteral("00:42"));
    }

    void settings_areNeverWritten()
    {
        settings.timerFontSize = 9000; // what it shows is derived from the record, not put into it
        settings.warningThreshold = -3;
        settings.bgImageEnabled = true;
        settings.bgImagePath = "missing.png";
        window->show();
        window->onTimerTick(0);
        QCOMPARE(settings.timerFontSize, 9000);
        QCOMPARE(settings.warningThreshold, -3);
        QVERIFY(settings.bgImageEnabled);
        QCOMPARE(settings.bgImagePath, QStringLiteral("missing.png"));
    }

    void content_neverSizesTheWindow_data()
    {
        QTest::addColumn<bool>("fullScreen");
        QTest::addColumn<QSize>("size");
        QTest::newRow("full screen") << true << QSize();
        QTest::newRow("ordinary window") << false << QSize(800, 500);
        QTest::newRow("low window") << false << QSize(800, 50);
        QTest::newRow("tiny window") << false << QSize(1, 1);
    }

    // A window that its content resizes does so in the event loop, step by step, as its fonts
    // follow its height.
    void content_neverSizesTheWindow()
    {
        QFETCH(bool, fullScreen);
        QFETCH(QSize, size);
        settings.timerFontSize = 550;
        settings.clockFontSize = 300;
        settings.messageFontSize = 150;
        if (fullScreen) {
            size = window->screen()->size();
            window->setGeometry(window->screen()->geometry());
            window->showFullScreen();
        } else {
            window->resize(size);
            window->show();
        }
        window->setMessage(QString(200, QLatin1Char('W')));
        for (int round = 0; round < 10; ++round) {
            window->onTimerTick(59940 + round);
            window->tickClock();
            QCoreApplication::processEvents();
            QCOMPARE(window->size(), size);
        }
        QCOMPARE(window->minimumSize(), QSize(0, 0));
        QCOMPARE(window->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
        QVERIFY(!window->grab().isNull());
    }

    // What a screen reader says of the window. It is there for an audience: its texts are their
    // own names, and nothing in it takes the keyboard.
    void screenReader_findsTheLinesAndTheProgress()
    {
        window->setTotalSeconds(20);
        window->onTimerTick(5);
        window->setMessage("<b>Wrap</b> up");
        window->show();
        QCOMPARE(controlLines(*window), QStringList{"progress Timer progress"});
        QCOMPARE(unsayableNames(*window), QStringList());
        QCOMPARE(tabStops(*window).size(), 0);
        QAccessibleInterface *bar = QAccessible::queryAccessibleInterface(progressBar(*window));
        QVERIFY(bar && bar->valueInterface());
        QCOMPARE(bar->valueInterface()->currentValue().toInt(), 250);
        QCOMPARE(bar->valueInterface()->maximumValue().toInt(), 1000);

        const QString message = "Wrap up (Message)";
        QString clock = clockLabel(*window)->text() + " (Clock)";
        QCOMPARE(textLines(*window), (QStringList{"00:05 (Timer)", clock, message}));
        window->setViewMode(1);
        clock = clockLabel(*window)->text() + " (Clock)";
        QCOMPARE(textLines(*window), (QStringList{clock, message}));
        window->setViewMode(0);
        window->onTimerTick(0);
        window->tickBlink(); // the figure is hidden to the eye alone
        QCOMPARE(textLines(*window), (QStringList{"00:00 (Timer)", message}));
    }

private:
    AppSettings settings;
    std::unique_ptr<OutputWindow> window;
};

VELMORA_TEST_MAIN(OutputWindowTest)
#include "tst_OutputWindow.moc"
