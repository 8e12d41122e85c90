#include <array>
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

namespace {

constexpr std::array makersOfHeaders{&makeSectionHeader, &makeHookedHeader};

} // namespace

/// What the windows make their forms of.
class FormHelpersTest : public QObject
{
    Q_OBJECT

private slots:
    void line_isHorizontalAndFree()
    {
        const std::unique_ptr<QFrame> line(makeLine());
        QCOMPARE(line->frameShape(), QFrame::HLine);
        QVERIFY(!line->parent());
    }

    void line_isBareByDefault()
    {
        const std::unique_ptr<QFrame> line(makeLine());
        QCOMPARE(line->styleSheet(), QString());
    }

    void line_wearsItsSheet()
    {
        const std::unique_ptr<QFrame> line(makeLine("color:#123456;"));
        QCOMPARE(line->styleSheet(), QStringLiteral("color:#123456;"));
    }

    // The application's sheet addresses the lines by the number of their shape.
    void line_isMetByTheSeparatorRule()
    {
        const std::unique_ptr<QFrame> line(makeLine());
        QCOMPARE(int(line->frameShape()), 4);
    }

    void header_isInCapitalsAndFree_data()
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

    void header_isInCapitalsAndFree()
    {
        QFETCH(QString, title);
        QFETCH(QString, shown);
        for (const auto make : makersOfHeaders) {
            const std::unique_ptr<QLabel> header(make(title, nullptr));
            QCOMPARE(header->text(), shown);
            QVERIFY(!header->parent());
        }
    }

    void header_labelsItsInput()
    {
        QSpinBox input;
        for (const auto make : makersOfHeaders) {
            const std::unique_ptr<QLabel> header(make("Set Time", &input));
            QCOMPARE(header->buddy(), &input);
            QVERIFY(!header->parent());
        }
    }

    void header_labelsNothingByDefault()
    {
        const std::unique_ptr<QLabel> section(makeSectionHeader("Format"));
        const std::unique_ptr<QLabel> hooked(makeHookedHeader("Output View"));
        QVERIFY(!section->buddy());
        QVERIFY(!hooked->buddy());
    }

    void header_isStyledByItselfOrByItsObjectName()
    {
        const std::unique_ptr<QLabel> section(makeSectionHeader("Format"));
        const std::unique_ptr<QLabel> hooked(makeHookedHeader("Output View"));
        QVERIFY(!section->styleSheet().isEmpty());
        QCOMPARE(section->objectName(), QString());
        QCOMPARE(hooked->styleSheet(), QString());
        QCOMPARE(hooked->objectName(), QStringLiteral("sectionHeader"));
    }

    void spinBox_isMadeAsAsked()
    {
        const std::unique_ptr<QSpinBox> spinBox(makeSpinBox({1, 90}, " px", 30, "Font size"));
        QVERIFY(!spinBox->parent());
        QCOMPARE(spinBox->minimum(), 1);
        QCOMPARE(spinBox->maximum(), 90);
        QCOMPARE(spinBox->text(), QStringLiteral("30 px"));
        QCOMPARE(spinBox->accessibleName(), QStringLiteral("Font size"));
    }

    void spinBox_bringsItsValueIntoTheRange()
    {
        const std::unique_ptr<QSpinBox> low(makeSpinBox({1, 90}, {}, 0, "Font size"));
        const std::unique_ptr<QSpinBox> high(makeSpinBox({1, 90}, {}, 91, "Font size"));
        QCOMPARE(low->value(), 1);
        QCOMPARE(high->value(), 90);
    }

    void listedPresets_areTheItemsSecondsInOrder()
    {
        QListWidget list;
        QCOMPARE(listedPresets(list), QList<int>());
        for (const int secs : {900, 45, 300}) {
            auto *item = new QListWidgetItem("chip", &list);
            item->setData(Qt::UserRole, secs);
        }
        QCOMPARE(listedPresets(list), (QList<int>{900, 45, 300}));
    }

    void version_isTheProgramsVersion()
    {
        QCOMPARE(QString::fromLatin1(velmoraVersion), QStringLiteral("1.1.4"));
    }
};

VELMORA_TEST_MAIN(FormHelpersTest)
#include "tst_FormHelpers.moc"
