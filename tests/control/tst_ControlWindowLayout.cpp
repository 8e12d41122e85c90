#include <QBoxLayout>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaMethod>
#include <QScrollArea>
#include <QStatusBar>
#include <QTest>

#include "ControlFixture.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

QString outline(const QLayout &layout);

// A widget as a person would name it.
QString outline(const QWidget &widget)
{
    if (const auto *checkBox = qobject_cast<const QCheckBox *>(&widget))
        return QStringLiteral("check box ") + checkBox->text();
    if (const auto *button = qobject_cast<const QAbstractButton *>(&widget))
        return QStringLiteral("button ") + button->text();
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return QStringLiteral("label ") + label->text();
    if (const auto *spinBox = qobject_cast<const QSpinBox *>(&widget))
        return QStringLiteral("spin box") + spinBox->suffix();
    if (qobject_cast<const QScrollArea *>(&widget))
        return QStringLiteral("scroll area");
    if (qobject_cast<const QListWidget *>(&widget))
        return QStringLiteral("list");
    if (qobject_cast<const QLineEdit *>(&widget))
        return QStringLiteral("edit");
    const auto *frame = qobject_cast<const QFrame *>(&widget);
    if (frame && frame->frameShape() == QFrame::HLine)
        return QStringLiteral("line");
    if (widget.layout())
        return outline(*widget.layout());
    return QStringLiteral("unknown");
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
            items.append(item->expandingDirections() ? QStringLiteral("stretch")
                                                     : QStringLiteral("space"));
    }
    return items;
}

// A row's items are parted by an upright line.
QString outline(const QLayout &layout)
{
    const auto *box = qobject_cast<const QBoxLayout *>(&layout);
    const bool isRow = box && box->direction() == QBoxLayout::LeftToRight;
    return QLatin1Char('[')
        + outlineOfItems(layout).join(isRow ? QStringLiteral(" | ") : QStringLiteral(" / "))
        + QLatin1Char(']');
}

QBoxLayout *mainLayout(const ControlFixture &fixture)
{
    return qobject_cast<QBoxLayout *>(fixture.window->centralWidget()->layout());
}

QScrollArea *scrollArea(const ControlFixture &fixture)
{
    return fixture.window->centralWidget()->findChild<QScrollArea *>(QString(),
                                                                     Qt::FindDirectChildrenOnly);
}

QBoxLayout *contentLayout(const ControlFixture &fixture)
{
    return qobject_cast<QBoxLayout *>(scrollArea(fixture)->widget()->layout());
}

} // namespace

class ControlWindowLayoutTest : public QObject
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
        QCOMPARE(qApp->styleSheet().size(), 3397);
    }

    void window_hasTitleAndMinimumSize()
    {
        const ControlFixture fixture;
        QCOMPARE(fixture.window->windowTitle(), QStringLiteral("Velmora — Control"));
        QCOMPARE(fixture.window->minimumSize(), QSize(480, 420));
    }

    void window_takesItsParent()
    {
        ControlFixture fixture;
        QWidget parent;
        const ControlWindow window(&fixture.settings, &fixture.engine, &fixture.output, &parent);
        QCOMPARE(window.parentWidget(), &parent);
        QVERIFY(window.isWindow());
    }

    void mainColumn_holdsItsItemsFromTopToBottom()
    {
        const ControlFixture fixture;
        QCOMPARE(outlineOfItems(*mainLayout(fixture)),
                 QStringList({"[button   VELMORA | stretch | button ⚙]", "line", "label 05:00",
                              "scroll area", "line",
                              "[button ▶  Show Output Window | button Preview]"}));
        QCOMPARE(mainLayout(fixture)->direction(), QBoxLayout::TopToBottom);
    }

    void mainColumn_hasItsMargins()
    {
        const ControlFixture fixture;
        QCOMPARE(mainLayout(fixture)->contentsMargins(), QMargins(12, 6, 12, 6));
    }

    void mainColumn_givesTheFreeHeightToTheScrollArea()
    {
        const ControlFixture fixture;
        QList<int> stretches;
        for (int i = 0; i < mainLayout(fixture)->count(); ++i)
            stretches.append(mainLayout(fixture)->stretch(i));
        QCOMPARE(stretches, QList<int>({0, 0, 0, 1, 0, 0}));
    }

    void scrollContent_holdsItsItemsFromTopToBottom()
    {
        const ControlFixture fixture;
        QCOMPARE(outlineOfItems(*contentLayout(fixture)),
                 QStringList({"[button ▼  Countdown | button ▲  Count Up]",
                              "line",
                              "[button ▶  START | button ⏸  PAUSE | button ↺  RESET]",
                              "[button +1 min | button −1 min]",
                              "line",
                              "label SET TIME",
                              "[[button ◀ | spin box min | button ▶] | "
                              "[button ◀ | spin box sec | button ▶] | "
                              "button Set | button Add to Preset | stretch]",
                              "line",
                              "label PRESETS  —  DRAG TO REORDER",
                              "list",
                              "line",
                              "label OUTPUT VIEW",
                              "[button ⏱  Timer | button 🕐  Clock | button ⊞  Both]",
                              "line",
                              "label MESSAGE OVERLAY",
                              "[edit | button Push | button Clear]",
                              "line",
                              "label AUDIO CUE AT 00:00",
                              "check box Enable sound cue",
                              "[label No file selected | button Browse… | button Test]",
                              "stretch"}));
        QCOMPARE(contentLayout(fixture)->direction(), QBoxLayout::TopToBottom);
    }

    void scrollContent_hasItsMarginsAndSpacing()
    {
        const ControlFixture fixture;
        QCOMPARE(contentLayout(fixture)->contentsMargins(), QMargins(0, 0, 4, 0));
        QCOMPARE(contentLayout(fixture)->spacing(), 5);
    }

    void styleSheet_ofScrollAreaAndContent_isLiteral()
    {
        const ControlFixture fixture;
        QCOMPARE(
            scrollArea(fixture)->styleSheet(),
            QStringLiteral(
                "QScrollArea { background-color: #1c1c1c; border: none; }QScrollArea > QWidget > "
                "QWidget { background-color: #1c1c1c; }QScrollBar:vertical { background: #1c1c1c; "
                "width: 6px; border: none; }QScrollBar::handle:vertical { background: #444; "
                "border-radius: 3px; min-height: 20px; }QScrollBar::add-line:vertical, "
                "QScrollBar::sub-line:vertical { height: 0; }"));
        QCOMPARE(scrollArea(fixture)->widget()->styleSheet(),
                 QStringLiteral("background-color: #1c1c1c;"));
    }

    void scrollArea_scrollsVerticallyOnly()
    {
        const ControlFixture fixture;
        QVERIFY(scrollArea(fixture)->widgetResizable());
        QCOMPARE(scrollArea(fixture)->frameShape(), QFrame::NoFrame);
        QCOMPARE(scrollArea(fixture)->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(scrollArea(fixture)->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    }

    void statusBar_isHidden()
    {
        ControlFixture fixture;
        fixture.showControl();
        const auto *statusBar = fixture.window->findChild<QStatusBar *>();
        QVERIFY(statusBar);
        QVERIFY(!statusBar->isVisible());
    }
};

VELMORA_TEST_MAIN(ControlWindowLayoutTest)
#include "tst_ControlWindowLayout.moc"
