#include <memory>

#include <QFrame>
#include <QLabel>
#include <QListWidget>
#include <QSpinBox>
#include <QTest>

#include "AppSettings.h"
#include "FormHelpers.h"
#include "TestMain.h"
#include "Version.h"

/// What the windows make their forms of.
class FormHelpersTest : public QObject
{
    Q_OBJECT

private slots:
    void line_isHorizontalAndBareUnlessItIsGivenASheet()
    {
        const std::unique_ptr<QFrame> bare(makeLine());
        const std::unique_ptr<QFrame> colored(makeLine("color:#123456;"));
        QVERIFY(!bare->parent());
        QCOMPARE(bare->frameShape(), QFrame::HLine);
        QCOMPARE(int(bare->frameShape()), 4); // the application's sheet knows lines by this number
        QCOMPARE(bare->styleSheet(), QString());
        QCOMPARE(colored->styleSheet(), QStringLiteral("color:#123456;"));
    }

    void header_isInCapitalsAndLabelsItsInput()
    {
        QSpinBox input;
        for (const auto make : {&makeSectionHeader, &makeHookedHeader}) {
            const std::unique_ptr<QLabel> labelling(make("Set Time", &input));
            const std::unique_ptr<QLabel> empty(make({}, nullptr));
            QCOMPARE(labelling->text(), QStringLiteral("SET TIME"));
            QCOMPARE(labelling->buddy(), &input);
            QVERIFY(!labelling->parent());
            QCOMPARE(empty->text(), QString());
            QVERIFY(!empty->buddy());
        }
    }

    void header_isStyledByItselfOrByItsObjectName()
    {
        const std::unique_ptr<QLabel> section(makeSectionHeader("Format"));
        const std::unique_ptr<QLabel> hooked(makeHookedHeader("Output View"));
        QVERIFY(!section->buddy());
        QVERIFY(!hooked->buddy());
        QVERIFY(!section->styleSheet().isEmpty());
        QCOMPARE(section->objectName(), QString());
        QCOMPARE(hooked->styleSheet(), QString());
        QCOMPARE(hooked->objectName(), QStringLiteral("sectionHeader"));
    }

    void spinBox_bringsItsValueIntoItsRange_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("within") << 30 << "30 px";
        QTest::newRow("too small") << 0 << "1 px";
        QTest::newRow("too large") << 91 << "90 px";
    }

    void spinBox_bringsItsValueIntoItsRange()
    {
        QFETCH(int, value);
        const std::unique_ptr<QSpinBox> spinBox(makeSpinBox({1, 90}, " px", value, "Font size"));
        QVERIFY(!spinBox->parent());
        QCOMPARE(spinBox->minimum(), 1);
        QCOMPARE(spinBox->maximum(), 90);
        QTEST(spinBox->text(), "text");
        QCOMPARE(spinBox->accessibleName(), QStringLiteral("Font size"));
    }

    void listedPresets_areTheItemsSecondsInOrder()
    {
        QListWidget list;
        QCOMPARE(listedPresets(list), QList<int>());
        for (const int secs : {900, 45, 300})
            (new QListWidgetItem("chip", &list))->setData(Qt::UserRole, secs);
        QCOMPARE(listedPresets(list), (QList<int>{900, 45, 300}));
    }

    void version_isTheProgramsVersion()
    {
        QCOMPARE(QString::fromLatin1(velmoraVersion), QStringLiteral("1.1.4"));
    }
};

VELMORA_TEST_MAIN(FormHelpersTest)
#include "tst_FormHelpers.moc"
