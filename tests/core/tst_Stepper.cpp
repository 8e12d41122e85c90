#include <memory>

#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include "Find.h"
#include "Stepper.h"
#include "TestMain.h"

namespace {

const QString sharedStyle = QStringLiteral(
    "QPushButton { background:#3a3a3a; color:#ffffff; font-size:11px; font-weight:bold;"
    "              border:1px solid #444; padding:0 8px 4px 8px; }"
    "QPushButton:hover   { background:#505050; color:#ffffff; }"
    "QPushButton:pressed { background:#1a6633; color:#ffffff; }");

} // namespace

/// How the stepper is put together: pieces, texts, sheets, sizes and layout.
class StepperTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        spinBox = new QSpinBox;
        container.reset(makeStepper(spinBox));
    }

    void cleanup() { container.reset(); }

    void spinBox_isDressed()
    {
        QCOMPARE(spinBox->buttonSymbols(), QAbstractSpinBox::NoButtons);
        QCOMPARE(spinBox->alignment(), Qt::AlignCenter);
        const QString style = QStringLiteral(
            "QSpinBox { background:#2b2b2b; color:#e8e8e8;           border-top:1px solid #444; "
            "border-bottom:1px solid #444;           border-left:none; border-right:none;          "
            " "
            "border-radius:0; padding:6px 6px; }");
        QCOMPARE(spinBox->styleSheet(), style);
    }

    void spinBox_keepsWhatTheCallerSet()
    {
        auto *dressed = new QSpinBox;
        dressed->setRange(-7, 4321);
        dressed->setSuffix(" sec");
        dressed->setValue(17);
        dressed->setSingleStep(5);
        const QSignalSpy changes(dressed, &QSpinBox::valueChanged);
        const std::unique_ptr<QWidget> stepper(makeStepper(dressed));
        QCOMPARE(dressed->minimum(), -7);
        QCOMPARE(dressed->maximum(), 4321);
        QCOMPARE(dressed->suffix(), QStringLiteral(" sec"));
        QCOMPARE(dressed->value(), 17);
        QCOMPARE(dressed->singleStep(), 5);
        QCOMPARE(dressed->focusPolicy(), Qt::WheelFocus);
        QVERIFY(dressed->keyboardTracking());
        QVERIFY(!dressed->wrapping());
        QVERIFY(!dressed->isReadOnly());
        QCOMPARE(changes.size(), 0);
    }

    void spinBox_takesWhatTheCallerSetsLater()
    {
        spinBox->setRange(0, 999);
        spinBox->setSuffix(" min");
        spinBox->setValue(500);
        QCOMPARE(spinBox->text(), QStringLiteral("500 min"));
    }

    void buttons_areTwoAndDressed()
    {
        QCOMPARE(container->findChildren<QPushButton *>().size(), 2);
        QVERIFY(downButton());
        QVERIFY(upButton());
        QCOMPARE(downButton()->text(), QString(QChar(0x25c0)));
        QCOMPARE(upButton()->text(), QString(QChar(0x25b6)));
        const QString leftEdge = "QPushButton { border-radius:3px 0 0 3px; border-right:none; }";
        const QString rightEdge = "QPushButton { border-radius:0 3px 3px 0; border-left:none; }";
        QCOMPARE(downButton()->styleSheet(), sharedStyle + leftEdge);
        QCOMPARE(upButton()->styleSheet(), sharedStyle + rightEdge);
        QVERIFY(!downButton()->autoRepeat());
        QVERIFY(!upButton()->autoRepeat());
    }

    void sizes_areFixed()
    {
        for (const QPushButton *button : {downButton(), upButton()}) {
            QCOMPARE(button->minimumSize(), QSize(28, 32));
            QCOMPARE(button->maximumSize(), QSize(28, 32));
        }
        QCOMPARE(spinBox->minimumSize(), QSize(80, 32));
        QCOMPARE(spinBox->maximumSize(), QSize(QWIDGETSIZE_MAX, 32));
        QCOMPARE(container->minimumHeight(), 32);
        QCOMPARE(container->maximumHeight(), 32);
        QCOMPARE(container->maximumWidth(), QWIDGETSIZE_MAX);
    }

    void container_isFree()
    {
        QVERIFY(!container->parent());
        QCOMPARE(container->metaObject(), &QWidget::staticMetaObject);
        QVERIFY(container->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(container->styleSheet(), QString());
    }

    void container_ownsThePieces()
    {
        QCOMPARE(spinBox->parent(), container.get());
        QCOMPARE(downButton()->parent(), container.get());
        QCOMPARE(upButton()->parent(), container.get());
        const QSignalSpy destroyed(spinBox, &QObject::destroyed);
        container.reset();
        QCOMPARE(destroyed.size(), 1);
    }

    void layout_hasNoGaps()
    {
        const auto *layout = qobject_cast<QHBoxLayout *>(container->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins(0, 0, 0, 0));
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->alignment(), Qt::AlignVCenter);
    }

    void layout_holdsThePiecesInOrder()
    {
        const auto *layout = qobject_cast<QHBoxLayout *>(container->layout());
        const QList<QWidget *> pieces{downButton(), spinBox, upButton()};
        QCOMPARE(layout->count(), 3);
        for (int i = 0; i < layout->count(); ++i) {
            QCOMPARE(layout->itemAt(i)->widget(), pieces.at(i));
            QCOMPARE(layout->itemAt(i)->alignment(), Qt::AlignVCenter);
            QCOMPARE(layout->stretch(i), 0);
        }
    }

    void eachCall_makesAContainerOfItsOwn()
    {
        auto *another = new QSpinBox;
        const std::unique_ptr<QWidget> second(makeStepper(another));
        QVERIFY(second.get() != container.get()); // cppcheck-suppress mismatchingContainers
        another->setValue(5);
        findByText<QPushButton>(*second, "▶")->click();
        QCOMPARE(another->value(), 6);
        QCOMPARE(spinBox->value(), 0);
    }

    void buttons_sayWhatTheyChange_data()
    {
        QTest::addColumn<QString>("valueName");
        QTest::addColumn<QString>("down");
        QTest::addColumn<QString>("up");
        QTest::newRow("named") << "Font size"
                               << "Decrease font size"
                               << "Increase font size";
        QTest::newRow("nameless") << ""
                                  << "Decrease"
                                  << "Increase";
    }

    void buttons_sayWhatTheyChange()
    {
        QFETCH(QString, valueName);
        auto *value = new QSpinBox;
        value->setAccessibleName(valueName);
        container.reset(makeStepper(value));
        QTEST(downButton()->accessibleName(), "down");
        QTEST(upButton()->accessibleName(), "up");
        QCOMPARE(value->accessibleName(), valueName);
    }

private:
    QPushButton *downButton() const { return findByText<QPushButton>(*container, "◀"); }
    QPushButton *upButton() const { return findByText<QPushButton>(*container, "▶"); }

    QSpinBox *spinBox = nullptr;
    std::unique_ptr<QWidget> container;
};

VELMORA_TEST_MAIN(StepperTest)
#include "tst_Stepper.moc"
