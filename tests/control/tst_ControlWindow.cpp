#include <QBoxLayout>
#include <QCheckBox>
#include <QIcon>
#include <QMetaMethod>
#include <QScrollArea>
#include <QStatusBar>
#include <QTest>

#include "ControlFixture.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const char *const titleStyle =
    "QPushButton#appTitle { background:none; border:none; color:#e8e8e8;  font-size:18px; "
    "font-weight:bold; letter-spacing:2px; padding:0; text-align:left; "
    "}QPushButton#appTitle:hover { color:#4ade80; }";
const char *const setStyle =
    "QPushButton { padding:0; min-height:0; font-size:13px; border:2px solid #2a9c4a; }";
const char *const addStyle = "QPushButton { padding:0; min-height:0; font-size:13px; }";

/// What is set for a button, and what the application's style sheet makes of it once it is shown:
/// its minima beat a fixed height of 30, 36 or 38. In the scroll area, all grounds are the same,
/// and a button shows its role by its border.
struct ButtonLook
{
    const char *text;
    const char *objectName;
    QSize fixed;        // 0: not fixed
    QSize shown;        // 0: as the window gives
    const char *border; // none: not looked at
    const char *ground;
    const char *styleSheet = "";
};

const ButtonLook buttonLooks[] = {
    {"  VELMORA", "appTitle", {0, 0}, {0, 0}, "", "", titleStyle},
    {"⚙", "settingsBtn", {36, 36}, {66, 42}, "#444444", "#1c1c1c"},
    {"▼  Countdown", "", {0, 0}, {0, 42}, "#2a9c4a", "#1c1c1c"},
    {"▲  Count Up", "", {0, 0}, {0, 42}, "#444444", "#1c1c1c"},
    {"▶  START", "startBtn", {0, 0}, {0, 42}, "#2a8c2a", "#1c1c1c"},
    {"⏸  PAUSE", "pauseBtn", {0, 0}, {0, 42}, "#8c7000", "#1c1c1c"},
    {"↺  RESET", "resetBtn", {0, 0}, {0, 42}, "#8c2a2a", "#1c1c1c"},
    {"+1 min", "", {0, 30}, {0, 42}, "#444444", "#1c1c1c"},
    {"−1 min", "", {0, 30}, {0, 42}, "#444444", "#1c1c1c"},
    {"Set", "", {60, 32}, {60, 32}, "#2a9c4a", "#1c1c1c", setStyle},
    {"Add to Preset", "", {100, 32}, {100, 32}, "#444444", "#1c1c1c", addStyle},
    {"⏱  Timer", "", {0, 0}, {0, 42}, "#444444", "#1c1c1c"},
    {"🕐  Clock", "", {0, 0}, {0, 42}, "#444444", "#1c1c1c"},
    {"⊞  Both", "", {0, 0}, {0, 42}, "#2a9c4a", "#1c1c1c"},
    {"Push", "", {60, 0}, {0, 42}, "#444444", "#1c1c1c"},
    {"Clear", "", {60, 0}, {0, 42}, "#444444", "#1c1c1c"},
    {"Browse…", "", {80, 0}, {0, 42}, "#444444", "#1c1c1c"},
    {"Test", "", {50, 0}, {0, 42}, "#444444", "#1c1c1c"},
    {"▶  Show Output Window", "outputToggleBtn", {0, 38}, {0, 42}, "#2a5c8c", "#1a3a5c"},
    {"Preview", "", {100, 38}, {100, 42}, "#444444", "#2b2b2b"},
};

/// The colour of the window's picture at a point of one of its widgets.
QString pixel(const ControlFixture &fixture, const QWidget &widget, const QPoint &point)
{
    const QImage picture = fixture.window->grab().toImage();
    return picture.pixelColor(widget.mapTo(fixture.window.get(), point)).name();
}

QString outline(const QLayout &layout);

/// A widget as its user would name it.
QString outline(const QWidget &widget)
{
    if (const auto *checkBox = qobject_cast<const QCheckBox *>(&widget))
        return "check box " + checkBox->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return "button " + button->text();
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return (label->objectName() == "sectionHeader" ? "header " : "label ") + label->text();
    if (const auto *spinBox = qobject_cast<const QSpinBox *>(&widget))
        return QStringLiteral("%1 to %2%3")
            .arg(spinBox->minimum())
            .arg(spinBox->maximum())
            .arg(spinBox->suffix());
    if (qobject_cast<const QScrollArea *>(&widget))
        return QStringLiteral("scroll area");
    if (qobject_cast<const QListWidget *>(&widget))
        return QStringLiteral("list");
    if (qobject_cast<const QLineEdit *>(&widget))
        return QStringLiteral("edit");
    const auto *frame = qobject_cast<const QFrame *>(&widget);
    if (frame && frame->frameShape() == QFrame::HLine)
        return QStringLiteral("line");
    return widget.layout() ? outline(*widget.layout()) : QStringLiteral("unknown");
}

QStringList outlineOfItems(const QLayout &layout)
{
    QStringList items;
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (item->widget())
            items.append(outline(*item->widget()));
        else if (item->layout())
            items.append(outline(*item->layout()));
        else
            items.append(item->expandingDirections() ? "stretch" : "space");
    }
    return items;
}

/// A row's items are separated by an upright line.
QString outline(const QLayout &layout)
{
    const auto *box = qobject_cast<const QBoxLayout *>(&layout);
    const bool isRow = box && box->direction() == QBoxLayout::LeftToRight;
    return '[' + outlineOfItems(layout).join(isRow ? " | " : " / ") + ']';
}

} // namespace

/// What the window holds at start, and how it looks.
class ControlWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void slots_standInTheirOrderAndNothingElseAmongThem()
    {
        const QMetaObject &meta = ControlWindow::staticMetaObject;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
            methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
        }
        QCOMPARE(methods,
                 QStringList({"onTimerTick(int)", "onStateChanged(bool)", "onSetTime()",
                              "onCountModeChanged(bool)", "onViewChanged(int)", "onPushMessage()",
                              "onClearMessage()", "onPreset(int)", "onSettingsChanged()",
                              "openSettings()", "toggleOutput()", "browseSoundFile()"}));
    }

    void construction_installsTheStyleSheetOnTheApplication()
    {
        qApp->setStyleSheet(QString());
        const ControlFixture fixture;
        QCOMPARE(qApp->styleSheet(), applicationStyleSheet());
    }

    void window_hasTitleMinimumSizeAndParent()
    {
        ControlFixture fixture;
        QWidget parent;
        const ControlWindow window(&fixture.settings, &fixture.engine, &fixture.output, &parent);
        QCOMPARE(window.windowTitle(), "Velmora — Control");
        QCOMPARE(window.minimumSize(), QSize(480, 420));
        QCOMPARE(window.parentWidget(), &parent);
        QVERIFY(window.isWindow());
    }

    void statusBar_isHidden()
    {
        ControlFixture fixture;
        fixture.showControl();
        const auto *statusBar = fixture.window->findChild<QStatusBar *>();
        QVERIFY(statusBar);
        QVERIFY(!statusBar->isVisible());
    }

    void mainColumn_holdsItsItemsFromTopToBottom()
    {
        const ControlFixture fixture;
        const auto *column = qobject_cast<QBoxLayout *>(fixture.window->centralWidget()->layout());
        QVERIFY(column);
        QCOMPARE(column->direction(), QBoxLayout::TopToBottom);
        QCOMPARE(column->contentsMargins(), QMargins(12, 6, 12, 6));
        QCOMPARE(outlineOfItems(*column),
                 QStringList({"[button   VELMORA | stretch | button ⚙]", "line", "label 05:00",
                              "scroll area", "line",
                              "[button ▶  Show Output Window | button Preview]"}));
        QList<int> stretches;
        for (int i = 0; i < column->count(); ++i)
            stretches.append(column->stretch(i));
        QCOMPARE(stretches, QList<int>({0, 0, 0, 1, 0, 0}));
    }

    void scrollArea_holdsItsItemsFromTopToBottom()
    {
        const ControlFixture fixture;
        const auto *area = fixture.window->findChild<QScrollArea *>();
        const auto *column = qobject_cast<QBoxLayout *>(area->widget()->layout());
        QVERIFY(column);
        QCOMPARE(column->direction(), QBoxLayout::TopToBottom);
        QCOMPARE(column->contentsMargins(), QMargins(0, 0, 4, 0));
        QCOMPARE(column->spacing(), 5);
        QCOMPARE(outlineOfItems(*column),
                 QStringList({"[button ▼  Countdown | button ▲  Count Up]",
                              "line",
                              "[button ▶  START | button ⏸  PAUSE | button ↺  RESET]",
                              "[button +1 min | button −1 min]",
                              "line",
                              "header SET TIME",
                              "[[button ◀ | 0 to 999 min | button ▶] | "
                              "[button ◀ | 0 to 59 sec | button ▶] | "
                              "button Set | button Add to Preset | stretch]",
                              "line",
                              "header PRESETS  —  DRAG TO REORDER",
                              "list",
                              "line",
                              "header OUTPUT VIEW",
                              "[button ⏱  Timer | button 🕐  Clock | button ⊞  Both]",
                              "line",
                              "header MESSAGE OVERLAY",
                              "[edit | button Push | button Clear]",
                              "line",
                              "header AUDIO CUE AT 00:00",
                              "check box Enable sound cue",
                              "[label No file selected | button Browse… | button Test]",
                              "stretch"}));
    }

    void scrollArea_scrollsVerticallyOnly()
    {
        const ControlFixture fixture;
        const auto *area = fixture.window->findChild<QScrollArea *>();
        QVERIFY(area->widgetResizable());
        QCOMPARE(area->frameShape(), QFrame::NoFrame);
        QCOMPARE(area->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(area->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
        QCOMPARE(area->widget()->styleSheet(), "background-color: #1c1c1c;");
        QCOMPARE(area->styleSheet(),
                 "QScrollArea { background-color: #1c1c1c; border: none; }QScrollArea > QWidget > "
                 "QWidget { background-color: #1c1c1c; }QScrollBar:vertical { background: #1c1c1c; "
                 "width: 6px; border: none; }QScrollBar::handle:vertical { background: #444; "
                 "border-radius: 3px; min-height: 20px; }QScrollBar::add-line:vertical, "
                 "QScrollBar::sub-line:vertical { height: 0; }");
    }

    void button_isSetUpAndLooksAsItShould_data()
    {
        QTest::addColumn<const ButtonLook *>("look");
        for (const ButtonLook &look : buttonLooks)
            QTest::newRow(look.text) << &look;
    }

    void button_isSetUpAndLooksAsItShould()
    {
        QFETCH(const ButtonLook *, look);
        ControlFixture fixture;
        const QAbstractButton *button = fixture.button(look->text);
        QVERIFY(button);
        QCOMPARE(button->objectName(), look->objectName);
        QCOMPARE(button->styleSheet(), look->styleSheet);
        QVERIFY(button->isEnabled()); // PAUSE as well
        const auto [width, height] = look->fixed;
        QCOMPARE(button->minimumWidth(), width);
        QCOMPARE(button->maximumSize(),
                 QSize(width ? width : QWIDGETSIZE_MAX, height ? height : QWIDGETSIZE_MAX));

        fixture.showControl();
        if (look->shown.width())
            QCOMPARE(button->width(), look->shown.width());
        if (look->shown.height())
            QCOMPARE(button->height(), look->shown.height());
        if (!*look->border)
            return;
        // In the middle of the upper edge, where a rounded border has its full colour; and inside
        // it, beside the text.
        QCOMPARE(pixel(fixture, *button, QPoint(button->width() / 2, 0)), look->border);
        QCOMPARE(pixel(fixture, *button, QPoint(5, 4)), look->ground);
    }

    // They are higher than their row: the line under it may not cover them.
    void adjustButtons_showTheirLowerBorders()
    {
        ControlFixture fixture;
        fixture.showControl();
        for (const char *text : {"+1 min", "−1 min"}) {
            const QAbstractButton *button = fixture.button(text);
            const QPoint lowerEdge(button->width() / 2, button->height() - 1);
            QCOMPARE(pixel(fixture, *button, lowerEdge), "#444444");
        }
    }

    // The application's sheet outweighs the fixed 32; the row stays at 32 and cuts them off.
    void stepperButtons_areHigherThanTheirFixedHeight()
    {
        ControlFixture fixture;
        fixture.showControl();
        int stepButtons = 0;
        const auto buttons = fixture.window->findChildren<QPushButton *>();
        for (const QPushButton *button : buttons) {
            if (button->text() != "◀" && button->text() != "▶")
                continue;
            ++stepButtons;
            QCOMPARE(button->size(), QSize(28, 34));
            QCOMPARE(button->parentWidget()->height(), 32);
        }
        QCOMPARE(stepButtons, 4);
    }

    // No groups: they are kept exclusive by hand.
    void checkableButtons_areCheckedAtStart()
    {
        const ControlFixture fixture;
        QStringList checkable;
        QStringList checked;
        const auto buttons = fixture.window->findChildren<QAbstractButton *>();
        for (const QAbstractButton *button : buttons) {
            QVERIFY(!button->group());
            if (button->isCheckable())
                checkable += button->text();
            if (button->isChecked())
                checked += button->text();
        }
        QCOMPARE(checkable,
                 QStringList({"▼  Countdown", "▲  Count Up", "⏱  Timer", "🕐  Clock", "⊞  Both",
                              "Enable sound cue"}));
        QCOMPARE(checked, QStringList({"▼  Countdown", "⊞  Both"}));
    }

    void header_showsLogoAndToolTip()
    {
        const ControlFixture fixture;
        const auto *title = fixture.named<QPushButton>("appTitle");
        QCOMPARE(title->iconSize(), QSize(28, 28));
        const QImage logo = QIcon(":/assets/VELMORA LOGO DESKTOP NO BACKGROUND.png")
                                .pixmap(title->iconSize())
                                .toImage();
        QVERIFY(!logo.isNull());
        QCOMPARE(title->icon().pixmap(title->iconSize()).toImage(), logo);
        QCOMPARE(fixture.named<QPushButton>("settingsBtn")->toolTip(), "Settings");
    }

    void figure_isCentredAndOfFixedHeight()
    {
        ControlFixture fixture;
        QCOMPARE(fixture.figure()->alignment(), Qt::AlignCenter);
        QCOMPARE(fixture.figure()->minimumHeight(), 80);
        QCOMPARE(fixture.figure()->maximumHeight(), 80);
        fixture.showControl();
        QCOMPARE(fixture.figure()->height(), 80);
    }

    void figure_isDrawnInItsColorAndVanishesInTheHiddenPhase()
    {
        ControlFixture fixture(recordWith(&AppSettings::timerColorCritical, QColor("#123456")));
        fixture.showControl();
        fixture.engine.setDuration(0);
        const auto shows = [&](const QColor &color) {
            const QImage picture = fixture.figure()->grab().toImage();
            for (int x = 0; x < picture.width(); ++x) {
                for (int y = 0; y < picture.height(); ++y) {
                    if (picture.pixelColor(x, y) == color)
                        return true;
                }
            }
            return false;
        };
        QVERIFY(shows("#123456"));
        runOut(fixture.blinkTimer());
        const QImage picture = fixture.figure()->grab().toImage();
        QImage empty(picture.size(), picture.format());
        empty.fill(QColor("#1c1c1c"));
        QCOMPARE(picture, empty);
    }

    // A long name of the sound's file is cut off, and pushes no button out of the window.
    void smallestWindow_scrollsVerticallyAndCutsNothingOff()
    {
        ControlFixture fixture(
            recordWith(&AppSettings::soundFilePath, "/music/" + QString(200, 'W') + ".wav"));
        fixture.window->resize(480, 420);
        fixture.window->show();
        QCOMPARE(fixture.window->size(), QSize(480, 420));
        QVERIFY(!fixture.button("▼  Countdown")->visibleRegion().isEmpty());
        QVERIFY(fixture.button("Test")->visibleRegion().isEmpty());
        for (const char *text : {"Browse…", "Test"}) {
            const QAbstractButton *button = fixture.button(text);
            const int right = button->mapTo(fixture.window.get(), QPoint(button->width(), 0)).x();
            QVERIFY2(right <= 480 - 12, qPrintable(QString::number(right)));
        }
    }
};

VELMORA_TEST_MAIN(ControlWindowTest)
#include "tst_ControlWindow.moc"
