#include <memory>

#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTest>

#include "FormParts.h"
#include "TestMain.h"
#include "Version.h"

/// The small parts that several windows share.
class FormPartsTest : public QObject
{
    Q_OBJECT

private slots:
    void line_isHorizontalAndFree();
    void line_isBareByDefault();
    void line_wearsItsSheet();
    void line_isMetByTheSeparatorRule();
    void title_isInCapitalsAndFree_data();
    void title_isInCapitalsAndFree();
    void title_labelsItsInput();
    void title_labelsNothingByDefault();
    void spinBox_isMadeAsAsked();
    void spinBox_bringsItsValueIntoTheRange();
    void listedPresets_areTheItemsSecondsInOrder();
    void version_isTheProgramsVersion();
};

void FormPartsTest::line_isHorizontalAndFree()
{
    const std::unique_ptr<QFrame> line(makeLine());
    QCOMPARE(line->frameShape(), QFrame::HLine);
    QVERIFY(!line->parent());
}

void FormPartsTest::line_isBareByDefault()
{
    const std::unique_ptr<QFrame> line(makeLine());
    QCOMPARE(line->styleSheet(), QString());
}

void FormPartsTest::line_wearsItsSheet()
{
    const std::unique_ptr<QFrame> line(makeLine("color:#123456;"));
    QCOMPARE(line->styleSheet(), QStringLiteral("color:#123456;"));
}

// The application's sheet addresses the lines by the number of their shape.
void FormPartsTest::line_isMetByTheSeparatorRule()
{
    const std::unique_ptr<QFrame> line(makeLine());
    QCOMPARE(int(line->frameShape()), 4);
}

void FormPartsTest::title_isInCapitalsAndFree_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("shown");
    QTest::newRow("small letters") << "presets"
                                   << "PRESETS";
    QTest::newRow("mixed") << "Set Time"
                           << "SET TIME";
    QTest::newRow("capitals") << "MESSAGE"
                              << "MESSAGE";
    QTest::newRow("none") << ""
                          << "";
}

void FormPartsTest::title_isInCapitalsAndFree()
{
    QFETCH(QString, title);
    QFETCH(QString, shown);
    const std::unique_ptr<QLabel> label(makeTitle(title));
    QCOMPARE(label->text(), shown);
    QVERIFY(!label->parent());
}

void FormPartsTest::title_labelsItsInput()
{
    QSpinBox input;
    const std::unique_ptr<QLabel> label(makeTitle("Set Time", &input));
    QCOMPARE(label->buddy(), &input);
    QVERIFY(!label->parent());
}

void FormPartsTest::title_labelsNothingByDefault()
{
    const std::unique_ptr<QLabel> label(makeTitle("Output View"));
    QVERIFY(!label->buddy());
}

void FormPartsTest::spinBox_isMadeAsAsked()
{
    const std::unique_ptr<QSpinBox> spinBox(makeSpinBox(1, 90, " px", 30, "Font size"));
    QVERIFY(!spinBox->parent());
    QCOMPARE(spinBox->minimum(), 1);
    QCOMPARE(spinBox->maximum(), 90);
    QCOMPARE(spinBox->text(), QStringLiteral("30 px"));
    QCOMPARE(spinBox->accessibleName(), QStringLiteral("Font size"));
}

void FormPartsTest::spinBox_bringsItsValueIntoTheRange()
{
    const std::unique_ptr<QSpinBox> low(makeSpinBox(1, 90, {}, 0, "Font size"));
    const std::unique_ptr<QSpinBox> high(makeSpinBox(1, 90, {}, 91, "Font size"));
    QCOMPARE(low->value(), 1);
    QCOMPARE(high->value(), 90);
}

void FormPartsTest::listedPresets_areTheItemsSecondsInOrder()
{
    QListWidget list;
    QCOMPARE(listedPresets(list), QList<int>());
    for (const int secs : {900, 45, 300}) {
        auto *item = new QListWidgetItem("chip", &list);
        item->setData(Qt::UserRole, secs);
    }
    QCOMPARE(listedPresets(list), (QList<int>{900, 45, 300}));
}

void FormPartsTest::version_isTheProgramsVersion()
{
    QCOMPARE(QString::fromLatin1(velmoraVersion), QStringLiteral("1.1.4"));
}

VELMORA_TEST_MAIN(FormPartsTest)
#include "tst_FormParts.moc"
