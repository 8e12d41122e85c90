#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <QTest>

#include "OutputParts.h"
#include "StartupRun.h"
#include "Store.h"

namespace {

int run(const std::function<void()> &beforeProgram, const std::function<void()> &whileRunning)
{
    return runProgram({.platform = {},
                       .arguments = {},
                       .beforeProgram = beforeProgram,
                       .whileRunning = [&whileRunning] {
                           whileRunning();
                           QCoreApplication::exit(0);
                       }});
}

QList<bool> attributes()
{
    QList<bool> set;
    for (int attribute = 0; attribute < Qt::AA_AttributeCount; ++attribute)
        set += QCoreApplication::testAttribute(Qt::ApplicationAttribute(attribute));
    return set;
}

/// Notes each of the program's windows that is shown, and what would be seen of it.
class ShowWatch : public QObject
{
public:
    QStringList shown;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Show || !watched->isWidgetType())
            return false;
        if (watched == controlWindow()) {
            const auto *preview = controlWindow()->findChild<QLabel *>("timerPreview");
            shown += QStringLiteral("Control %1, of %2 by %3")
                         .arg(preview->text(), QCoreApplication::applicationName(),
                              QCoreApplication::organizationName());
        } else if (watched == outputWindow()) {
            shown += QStringLiteral("Output %1, bar at %2")
                         .arg(figureLabel(*outputWindow())->text())
                         .arg(progressBar(*outputWindow())->value());
        }
        return false;
    }
};

} // namespace

// What of the start can only be seen before the event loop turns.
class StartupOrderTest : public QObject
{
    Q_OBJECT

private slots:
    // Attributes outlive the application that they are set for, so this comes before all runs.
    void initTestCase()
    {
        int count = 1;
        char name[] = "velmora";
        char *arguments[] = {name, nullptr};
        qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication plain(count, arguments);
        toolkitsAttributes = attributes();
    }

    void init()
    {
        removeStore();
        // They outlive the application of the run before.
        QCoreApplication::setApplicationName({});
        QCoreApplication::setOrganizationName({});
    }

    void application_isBuiltWithTheToolkitsDefaults()
    {
        const auto policy = QGuiApplication::highDpiScaleFactorRoundingPolicy();
        run({}, [&] {
            QCOMPARE(attributes(), toolkitsAttributes);
            QCOMPARE(QGuiApplication::highDpiScaleFactorRoundingPolicy(), policy);
        });
    }

    void windows_areShownInOrderAndReady()
    {
        // With any other count or total, figure or bar would be another.
        writeStoreBytes("[General]\ndefaultDuration=120\n");
        ShowWatch watch;
        run([&watch] { qApp->installEventFilter(&watch); },
            [&watch] {
                const QStringList order{"Control 02:00, of Velmora by Orlavane",
                                        "Output 02:00, bar at 1000"};
                QCOMPARE(watch.shown, order);
            });
    }

private:
    QList<bool> toolkitsAttributes;
};

VELMORA_STARTUP_TEST_MAIN(StartupOrderTest)
#include "tst_StartupOrder.moc"
