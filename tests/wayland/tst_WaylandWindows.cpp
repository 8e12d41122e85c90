#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include "Compositor.h"
#include "Desktop.h"
#include "Program.h"
#include "Store.h"
#include "TestMain.h"

/// The built program on a Wayland desktop with two outputs. Its Output window has a ground of a
/// colour of its own here, so that its edges can be told from the desktop's.
class WaylandWindows : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void start_coversTheOtherOutput();
    void windows_haveTheIdOfTheDesktopEntry();
    void toggleKey_hidesAndShowsOutput();
    void startKey_counts();
    void closingControl_endsTheProgram();

private:
    WaylandProgram program;
};

namespace {

const QColor outputGround(0x40, 0x20, 0x60);
constexpr QRect wholeOutput(QPoint(0, 0), compositor::outputSize);
// The clock below and the bar at the bottom stay outside.
constexpr QRect figureArea(0, 120, 1280, 310);
// 300 at a height of 1080.
constexpr int figureSize = 222;

bool outputIsOfOneGroundAtItsEdges()
{
    const QImage image = compositor::picture(1);
    if (image.isNull())
        return false;
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, 0) != outputGround
            || image.pixelColor(x, image.height() - 1) != outputGround)
            return false;
    }
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(0, y) != outputGround
            || image.pixelColor(image.width() - 1, y) != outputGround)
            return false;
    }
    return true;
}

bool isFigure(const QImage &image, const QString &figure)
{
    const desktop::Lettering lettering{"color:%1;font-size:" + QString::number(figureSize)
                                           + "px;font-weight:bold;font-family:monospace;",
                                       outputGround, compositor::outputSize.width() - 60};
    return desktop::isText(image.copy(figureArea), figure, normalColour, lettering);
}

bool figureIs(const QString &figure)
{
    return isFigure(compositor::picture(1), figure);
}

/// Whether up to twenty seconds of the five minutes have passed, but not none.
bool figureHasMoved()
{
    const QImage image = compositor::picture(1);
    for (int seconds = 59; seconds >= 40; --seconds) {
        if (isFigure(image, QStringLiteral("04:%1").arg(seconds)))
            return true;
    }
    return false;
}

/// The application ids that a program gives its windows.
QStringList applicationIds(const QByteArray &trace)
{
    static const QRegularExpression request("set_app_id\\(\"([^\"]*)\"\\)");
    QStringList ids;
    QRegularExpressionMatchIterator matches = request.globalMatch(QString::fromUtf8(trace));
    while (matches.hasNext())
        ids << matches.next().captured(1);
    return ids;
}

/// Gives the keyboard to the Control window: a click left of its figure, where nothing is.
void clickIntoControl()
{
    compositor::click(0, compositor::controlWindow(0).topLeft() + QPoint(30, 110));
}

} // namespace

void WaylandWindows::init()
{
    writeStoreBytes("[General]\nbgColor=" + outputGround.name().toLatin1() + "\n");
    program.start();
    AWAIT(!compositor::controlWindow(0).isNull());
    AWAIT(figureIs("05:00"));
    clickIntoControl();
}

void WaylandWindows::cleanup()
{
    if (QTest::currentTestFailed()) {
        for (int output : {0, 1}) {
            const QString file =
                QStringLiteral("%1-%2-%3.png")
                    .arg(QCoreApplication::applicationFilePath(), QTest::currentTestFunction())
                    .arg(output);
            compositor::picture(output).save(file);
            qInfo("What was to be seen then: %s", qPrintable(file));
        }
        program.kill();
    }
    const bool ended = !program.isRunning() || program.close();
    program.kill();
    QVERIFY(ended);
    QCOMPARE(program.complaints(), QByteArray());
}

void WaylandWindows::start_coversTheOtherOutput()
{
    AWAIT(compositor::isCovered(1));
    QVERIFY(outputIsOfOneGroundAtItsEdges());
    QVERIFY(compositor::controlWindow(1).isNull());
    QVERIFY(!compositor::isCovered(0));
    // The click has given it the keyboard, and with that another frame: it is drawn once more.
    AWAIT(wholeOutput.contains(compositor::controlWindow(0)));
    QVERIFY(!desktop::hasRun(compositor::picture(0), outputGround));
}

void WaylandWindows::windows_haveTheIdOfTheDesktopEntry()
{
    QVERIFY(program.close());
    program.start(true);
    QStringList ids;
    AWAIT((ids += applicationIds(program.trace())).size() >= 2);
    program.kill();
    program.trace();
    ids.removeDuplicates();
    QCOMPARE(ids, QStringList(QFileInfo(VELMORA_DESKTOP_ENTRY).completeBaseName()));
}

void WaylandWindows::toggleKey_hidesAndShowsOutput()
{
    desktop::press("o");
    AWAIT(!desktop::hasRun(compositor::picture(1), outputGround));
    QVERIFY(!desktop::hasRun(compositor::picture(0), outputGround));
    desktop::press("o");
    AWAIT(compositor::isCovered(1));
    AWAIT(figureIs("05:00"));
    QVERIFY(outputIsOfOneGroundAtItsEdges());
}

void WaylandWindows::startKey_counts()
{
    desktop::press("space");
    AWAIT(figureHasMoved());
    desktop::press("r");
    AWAIT(figureIs("05:00"));
}

void WaylandWindows::closingControl_endsTheProgram()
{
    QVERIFY(program.isRunning());
    QVERIFY(program.close());
    AWAIT(!desktop::hasRun(compositor::picture(1), outputGround));
}

VELMORA_TEST_MAIN(WaylandWindows)
#include "tst_WaylandWindows.moc"
