#include <QIcon>
#include <QTest>

#include "ControlFixture.h"
#include "TestMain.h"

class ControlWindowWidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void objectNames_areTheStyleSheetsHooks_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("objectName");
        QTest::newRow("title") << "  VELMORA"
                               << "appTitle";
        QTest::newRow("settings") << "⚙"
                                  << "settingsBtn";
        QTest::newRow("start") << "▶  START"
                               << "startBtn";
        QTest::newRow("pause") << "⏸  PAUSE"
                               << "pauseBtn";
        QTest::newRow("reset") << "↺  RESET"
                               << "resetBtn";
        QTest::newRow("output") << "▶  Show Output Window"
                                << "outputToggleBtn";
    }

    void objectNames_areTheStyleSheetsHooks()
    {
        QFETCH(QString, text);
        QFETCH(QString, objectName);
        const ControlFixture fixture;
        QVERIFY(fixture.button(text));
        QCOMPARE(fixture.button(text)->objectName(), objectName);
    }

    void sectionHeaders_allBearTheHook()
    {
        const ControlFixture fixture;
        QStringList titles;
        const QList<QLabel *> headers =
            fixture.window->findChildren<QLabel *>(QStringLiteral("sectionHeader"));
        for (const QLabel *header : headers) {
            QVERIFY(header->styleSheet().isEmpty());
            titles.append(header->text());
        }
        QCOMPARE(titles,
                 QStringList({"SET TIME", "PRESETS  —  DRAG TO REORDER", "OUTPUT VIEW",
                              "MESSAGE OVERLAY", "AUDIO CUE AT 00:00"}));
    }

    void styleSheets_areLiteral_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("styleSheet");
        QTest::newRow("title")
            << "  VELMORA"
            << "QPushButton#appTitle { background:none; border:none; color:#e8e8e8;  "
               "font-size:18px; "
               "font-weight:bold; letter-spacing:2px; padding:0; text-align:left; "
               "}QPushButton#appTitle:hover { color:#4ade80; }";
        QTest::newRow("set")
            << "Set"
            << "QPushButton { padding:0; min-height:0; font-size:13px; border:2px solid #2a9c4a; }";
        QTest::newRow("add") << "Add to Preset"
                             << "QPushButton { padding:0; min-height:0; font-size:13px; }";
        for (const char *hooked :
             {"⚙", "▶  START", "⏸  PAUSE", "↺  RESET", "+1 min", "−1 min", "▼  Countdown",
              "▲  Count Up", "⏱  Timer", "🕐  Clock", "⊞  Both", "▶  Show Output Window", "Preview"})
            QTest::newRow(hooked) << hooked << "";
    }

    void styleSheets_areLiteral()
    {
        QFETCH(QString, text);
        const ControlFixture fixture;
        QVERIFY(fixture.button(text));
        QTEST(fixture.button(text)->styleSheet(), "styleSheet");
    }

    // -1 stands for a side that is not fixed. The lower bounds are the style sheet's business
    // once it is applied; what comes of both is seen when the window is shown.
    void fixedSizes_areSet_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("settings") << "⚙" << 36 << 36;
        QTest::newRow("plus") << "+1 min" << -1 << 30;
        QTest::newRow("minus") << "−1 min" << -1 << 30;
        QTest::newRow("set") << "Set" << 60 << 32;
        QTest::newRow("add") << "Add to Preset" << 100 << 32;
        QTest::newRow("output") << "▶  Show Output Window" << -1 << 38;
        QTest::newRow("preview") << "Preview" << 100 << 38;
        for (const char *free : {"  VELMORA", "▶  START", "⏸  PAUSE", "↺  RESET", "▼  Countdown",
                                 "▲  Count Up", "⏱  Timer", "🕐  Clock", "⊞  Both"})
            QTest::newRow(free) << free << -1 << -1;
    }

    void fixedSizes_areSet()
    {
        QFETCH(QString, text);
        QFETCH(int, width);
        QFETCH(int, height);
        const ControlFixture fixture;
        const QAbstractButton *button = fixture.button(text);
        QVERIFY(button);
        QCOMPARE(button->maximumSize(),
                 QSize(width < 0 ? QWIDGETSIZE_MAX : width, height < 0 ? QWIDGETSIZE_MAX : height));
        QCOMPARE(button->minimumWidth(), qMax(width, 0));
    }

    void title_showsTheLogo()
    {
        const ControlFixture fixture;
        const auto *title = fixture.named<QPushButton>("appTitle");
        QCOMPARE(title->iconSize(), QSize(28, 28));
        const QImage logo = QIcon(QStringLiteral(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png"))
                                .pixmap(title->iconSize())
                                .toImage();
        QVERIFY(!logo.isNull());
        QCOMPARE(title->icon().pixmap(title->iconSize()).toImage(), logo);
    }

    void settingsButton_hasToolTip()
    {
        const ControlFixture fixture;
        QCOMPARE(fixture.named<QPushButton>("settingsBtn")->toolTip(), QStringLiteral("Settings"));
    }

    void figure_isCentredAndFixed()
    {
        const ControlFixture fixture;
        QCOMPARE(fixture.figure()->alignment(), Qt::AlignCenter);
        QCOMPARE(fixture.figure()->minimumHeight(), 80);
        QCOMPARE(fixture.figure()->maximumHeight(), 80);
    }

    void setTimeRow_hasRangesAndSuffixes()
    {
        const ControlFixture fixture;
        QCOMPARE(fixture.minutes()->minimum(), 0);
        QCOMPARE(fixture.minutes()->maximum(), 999);
        QCOMPARE(fixture.minutes()->suffix(), QStringLiteral(" min"));
        QCOMPARE(fixture.seconds()->minimum(), 0);
        QCOMPARE(fixture.seconds()->maximum(), 59);
        QCOMPARE(fixture.seconds()->suffix(), QStringLiteral(" sec"));
    }

    void setTimeRow_startsAtTheDefaultDuration_data()
    {
        QTest::addColumn<int>("duration");
        QTest::addColumn<int>("minutes");
        QTest::addColumn<int>("seconds");
        QTest::newRow("default") << 300 << 5 << 0;
        QTest::newRow("odd seconds") << 754 << 12 << 34;
        QTest::newRow("below a minute") << 59 << 0 << 59;
        QTest::newRow("zero") << 0 << 0 << 0;
        QTest::newRow("largest") << 59940 << 999 << 0;
    }

    void setTimeRow_startsAtTheDefaultDuration()
    {
        QFETCH(int, duration);
        AppSettings record;
        record.defaultDuration = duration;
        const ControlFixture fixture(record);
        QTEST(fixture.minutes()->value(), "minutes");
        QTEST(fixture.seconds()->value(), "seconds");
    }

    void checkableButtons_areCheckedAtStart_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("checked");
        QTest::newRow("countdown") << "▼  Countdown" << true << true;
        QTest::newRow("count up") << "▲  Count Up" << true << false;
        QTest::newRow("timer") << "⏱  Timer" << true << false;
        QTest::newRow("clock") << "🕐  Clock" << true << false;
        QTest::newRow("both") << "⊞  Both" << true << true;
        for (const char *text : {"▶  START", "⏸  PAUSE", "↺  RESET", "+1 min", "−1 min", "Set",
                                 "Add to Preset", "▶  Show Output Window", "Preview"})
            QTest::newRow(text) << text << false << false;
    }

    void checkableButtons_areCheckedAtStart()
    {
        QFETCH(QString, text);
        const ControlFixture fixture;
        QVERIFY(fixture.button(text));
        QTEST(fixture.button(text)->isCheckable(), "checkable");
        QTEST(fixture.button(text)->isChecked(), "checked");
        QVERIFY(!fixture.button(text)->group());
    }

    // PAUSE as well: only a reported change of state disables one of the two.
    void transport_isEnabledAtStart()
    {
        const ControlFixture fixture;
        QVERIFY(fixture.named<QPushButton>("startBtn")->isEnabled());
        QVERIFY(fixture.named<QPushButton>("pauseBtn")->isEnabled());
        QVERIFY(fixture.named<QPushButton>("resetBtn")->isEnabled());
    }
};

VELMORA_TEST_MAIN(ControlWindowWidgetsTest)
#include "tst_ControlWindowWidgets.moc"
