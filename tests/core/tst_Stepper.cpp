#include <memory>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "Find.h"
#include "Stepper.h"
#include "StyleSheet.h"
#include "TestMain.h"

namespace {

const QString spinBoxStyle = QStringLiteral(
    "QSpinBox { background:#2b2b2b; color:#e8e8e8;           border-top:1px solid #444; "
    "border-bottom:1px solid #444;           border-left:none; border-right:none;           "
    "border-radius:0; padding:6px 6px; }");
const QString sharedStyle = QStringLiteral(
    "QPushButton { background:#3a3a3a; color:#ffffff; font-size:11px; font-weight:bold;"
    "              border:1px solid #444; padding:0 8px 4px 8px; }"
    "QPushButton:hover   { background:#505050; color:#ffffff; }"
    "QPushButton:pressed { background:#1a6633; color:#ffffff; }");
const QString leftEdge =
    QStringLiteral("QPushButton { border-radius:3px 0 0 3px; border-right:none; }");
const QString rightEdge =
    QStringLiteral("QPushButton { border-radius:0 3px 3px 0; border-left:none; }");

} // namespace

/// How the stepper is put together, and how the operator uses it in a window of 600 × 400 pixels.
class StepperTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        window = std::make_unique<QWidget>();
        spinBox = new QSpinBox;
        spinBox->setRange(0, 100);
        spinBox->setValue(50);
        stepper = makeStepper(spinBox);
        QVERIFY(!stepper->parent());
        down = findByText<QPushButton>(*stepper, QChar(0x25c0));
        up = findByText<QPushButton>(*stepper, QChar(0x25b6));
        auto *layout = new QVBoxLayout(window.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(stepper);
        window->resize(600, 400);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
    }

    void cleanup()
    {
        window.reset();
        qApp->setStyleSheet({});
    }

    void spinBox_isStyledAndKeepsWhatTheCallerSet()
    {
        auto *own = new QSpinBox;
        own->setRange(-7, 4321);
        own->setSuffix(" sec");
        own->setValue(17);
        own->setSingleStep(5);
        const QSignalSpy changes(own, &QSpinBox::valueChanged);
        const std::unique_ptr<QWidget> container(makeStepper(own));
        QCOMPARE(own->buttonSymbols(), QAbstractSpinBox::NoButtons);
        QCOMPARE(own->alignment(), Qt::AlignCenter);
        QCOMPARE(own->styleSheet(), spinBoxStyle);
        QCOMPARE(own->minimum(), -7);
        QCOMPARE(own->maximum(), 4321);
        QCOMPARE(own->suffix(), QStringLiteral(" sec"));
        QCOMPARE(own->value(), 17);
        QCOMPARE(own->singleStep(), 5);
        QCOMPARE(own->focusPolicy(), Qt::WheelFocus);
        QVERIFY(own->keyboardTracking());
        QVERIFY(!own->wrapping());
        QVERIFY(!own->isReadOnly());
        QCOMPARE(changes.size(), 0);
        own->setRange(0, 999); // the caller may still change all that
        own->setSuffix(" min");
        own->setValue(500);
        QCOMPARE(own->text(), QStringLiteral("500 min"));
        QCOMPARE(spinBox->value(), 50);
    }

    void container_holdsAndOwnsThePieces()
    {
        QCOMPARE(stepper->metaObject(), &QWidget::staticMetaObject);
        QVERIFY(stepper->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(stepper->styleSheet(), QString());
        const auto *layout = qobject_cast<QHBoxLayout *>(stepper->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->alignment(), Qt::AlignVCenter);
        const QList<QWidget *> pieces{down, spinBox, up};
        QCOMPARE(layout->count(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(layout->itemAt(i)->widget(), pieces.at(i));
            QCOMPARE(layout->itemAt(i)->alignment(), Qt::AlignVCenter);
            QCOMPARE(layout->stretch(i), 0);
            QCOMPARE(pieces.at(i)->parent(), stepper);
        }
    }

    void buttons_haveTheirSheets()
    {
        QCOMPARE(down->styleSheet(), sharedStyle + leftEdge);
        QCOMPARE(up->styleSheet(), sharedStyle + rightEdge);
    }

    void sizes_areFixed()
    {
        for (const QPushButton *button : {down, up}) {
            QCOMPARE(button->minimumSize(), QSize(28, 32));
            QCOMPARE(button->maximumSize(), QSize(28, 32));
        }
        QCOMPARE(spinBox->minimumSize(), QSize(80, 32));
        QCOMPARE(spinBox->maximumSize(), QSize(QWIDGETSIZE_MAX, 32));
        QCOMPARE(stepper->minimumHeight(), 32);
        QCOMPARE(stepper->maximumSize(), QSize(QWIDGETSIZE_MAX, 32));
        QVERIFY(stepper->minimumSizeHint().width() >= 28 + 80 + 28);
    }

    void buttons_sayWhatTheyChange_data()
    {
        QTest::addColumn<QString>("down");
        QTest::addColumn<QString>("up");
        QTest::newRow("Font size") << "Decrease font size"
                                   << "Increase font size";
        QTest::newRow("") << "Decrease"
                          << "Increase";
    }

    void buttons_sayWhatTheyChange()
    {
        const QString name = QTest::currentDataTag();
        auto *value = new QSpinBox;
        value->setAccessibleName(name);
        const std::unique_ptr<QWidget> container(makeStepper(value));
        QTEST(findByText<QPushButton>(*container, "◀")->accessibleName(), "down");
        QTEST(findByText<QPushButton>(*container, "▶")->accessibleName(), "up");
        QCOMPARE(value->accessibleName(), name);
    }

    void click_stepsByOneAndEmitsTheChange()
    {
        const QSignalSpy changes(spinBox, &QSpinBox::valueChanged);
        for (QPushButton *button : {up, down, down})
            QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(changes, QList<QVariantList>({{51}, {50}, {49}}));
        spinBox->setSingleStep(5);
        QTest::mouseClick(up, Qt::LeftButton);
        QCOMPARE(spinBox->value(), 54);
    }

    void click_atABound_changesNothing()
    {
        for (const auto &[button, bound] : {std::pair{down, 0}, std::pair{up, 100}}) {
            spinBox->setValue(bound);
            const QSignalSpy changes(spinBox, &QSpinBox::valueChanged);
            QTest::mouseClick(button, Qt::LeftButton);
            QCOMPARE(spinBox->value(), bound);
            QCOMPARE(changes.size(), 0);
        }
    }

    // Another button, held later, does repeat: by then these two would have.
    void heldButton_doesNotRepeat()
    {
        for (const auto &[button, value] : {std::pair{up, 51}, std::pair{down, 50}}) {
            const QSignalSpy changes(spinBox, &QSpinBox::valueChanged);
            QTest::mousePress(button, Qt::LeftButton);
            QPushButton repeating;
            repeating.setAutoRepeat(true);
            const QSignalSpy repeats(&repeating, &QPushButton::clicked);
            repeating.setDown(true);
            QTRY_VERIFY(!repeats.isEmpty());
            QCOMPARE(changes.size(), 0);
            QTest::mouseRelease(button, Qt::LeftButton);
            QCOMPARE(spinBox->value(), value);
        }
    }

    void releaseBesideTheButton_changesNothing()
    {
        const QPoint beside(-10, -10);
        for (QPushButton *button : {down, up}) {
            QTest::mousePress(button, Qt::LeftButton);
            QTest::mouseMove(button, beside);
            QTest::mouseRelease(button, Qt::LeftButton, Qt::NoModifier, beside);
            QCOMPARE(spinBox->value(), 50);
        }
    }

    void keyboardAndWheel_stepAsUsual()
    {
        using Step = std::pair<Qt::Key, int>;
        for (const auto &[key, value] : {Step{Qt::Key_Up, 51}, Step{Qt::Key_Down, 50},
                                         Step{Qt::Key_PageUp, 60}, Step{Qt::Key_PageDown, 50}}) {
            QTest::keyClick(spinBox, key);
            QCOMPARE(spinBox->value(), value);
        }
        spinBox->selectAll();
        QTest::keyClicks(spinBox, "73");
        QCOMPARE(spinBox->value(), 73);
        const QPointF place = spinBox->rect().center();
        QWheelEvent away(place, spinBox->mapToGlobal(place), QPoint(), QPoint(0, 120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(spinBox, &away);
        QCOMPARE(spinBox->value(), 74);
    }

    void suffix_isShownCentred()
    {
        spinBox->setSuffix(" min");
        const auto *text = spinBox->findChild<QLineEdit *>();
        QVERIFY(text);
        QCOMPARE(text->text(), QStringLiteral("50 min"));
        QCOMPARE(text->alignment(), Qt::AlignCenter);
        const int textCentre = text->mapTo(stepper, text->rect().center()).x();
        QVERIFY(qAbs(textCentre - stepper->width() / 2) <= 1);
    }

    void pieces_areFlushAndAlways32High_data()
    {
        QTest::addColumn<QString>("applicationSheet");
        QTest::addColumn<QSize>("size");
        for (const QSize size : {QSize(600, 400), QSize(200, 20), QSize(1800, 1000)}) {
            QTest::addRow("bare in %d pixels", size.height()) << QString() << size;
            QTest::addRow("styled in %d pixels", size.height()) << applicationStyleSheet() << size;
        }
    }

    void pieces_areFlushAndAlways32High()
    {
        QFETCH(QString, applicationSheet);
        QFETCH(QSize, size);
        qApp->setStyleSheet(applicationSheet);
        window->resize(size);
        window->layout()->activate();
        stepper->layout()->activate();
        QCOMPARE(stepper->size(), QSize(size.width(), 32));
        QCOMPARE(spinBox->geometry(), QRect(28, 0, size.width() - 28 - 28, 32));
        for (const QPushButton *button : {down, up}) {
            QCOMPARE(button->pos(), QPoint(button == down ? 0 : size.width() - 28, 0));
            QCOMPARE(button->width(), 28);
        }
    }

    void button_isDarkGreenWhilePressed()
    {
        const QPoint beside(14, 4);
        for (QPushButton *button : {down, up}) {
            QCOMPARE(button->grab().toImage().pixelColor(beside).name(), QStringLiteral("#3a3a3a"));
            button->setDown(true);
            QCOMPARE(button->grab().toImage().pixelColor(beside).name(), QStringLiteral("#1a6633"));
        }
    }

private:
    std::unique_ptr<QWidget> window;
    QSpinBox *spinBox = nullptr;
    QWidget *stepper = nullptr;
    QPushButton *down = nullptr;
    QPushButton *up = nullptr;
};

VELMORA_TEST_MAIN(StepperTest)
#include "tst_Stepper.moc"
