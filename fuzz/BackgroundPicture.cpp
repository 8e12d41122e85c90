// The background picture: a byte chooses the file's ending, the rest is the file.
//
// - A file that Qt cannot read leaves the colour; one that it can read is stretched over
//   the whole window, and the colour shows only through the picture itself.
// - Without the file the colour is back.

#include <array>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QTemporaryDir>

#include "AppSettings.h"
#include "Fuzzing.h"
#include "OutputWindow.h"

namespace {

constexpr QSize windowSize(320, 180);
// The four that the dialog offers, and what else a settings file may name.
constexpr std::array<const char *, 8> endings{".png", ".jpg", ".jpeg", ".bmp",
                                              ".gif", ".svg", ".xpm",  ""};
const QColor ground(18, 52, 86);

struct Stage
{
    Stage()
    {
        settings.bgColor = ground;
        settings.bgImageEnabled = true;
        window.setViewMode(1);
        window.resize(windowSize);
        window.show();
        QCoreApplication::processEvents();
    }

    AppSettings settings;
    OutputWindow window{&settings};
    QTemporaryDir folder;
};

// The margins, which nothing but the ground covers.
QImage drawnCorner(OutputWindow &window)
{
    QImage picture(windowSize, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::black);
    window.render(&picture);
    return picture.copy(0, 0, windowSize.width(), 20);
}

QImage expectedCorner(const QPixmap &pixmap)
{
    QImage picture(windowSize, QImage::Format_ARGB32_Premultiplied);
    picture.fill(ground);
    QPainter painter(&picture);
    if (!pixmap.isNull())
        painter.drawPixmap(QRectF(picture.rect()), pixmap, QRectF());
    painter.end();
    return picture.copy(0, 0, windowSize.width(), 20);
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), "Not written");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static auto *const stage = new Stage;
    OutputWindow &window = stage->window;

    Input input(data, size);
    const char *ending = endings[std::size_t(input.choice(int(endings.size())))];
    const QString path = stage->folder.filePath(QLatin1String("picture") + QLatin1String(ending));
    write(path, input.rest());

    stage->settings.bgImagePath = path;
    window.refreshSettings();
    // Not QPixmap(path): Qt's cache may have an earlier file of that name and size.
    const QPixmap pixmap = QPixmap::fromImage(QImage(path));
    require(drawnCorner(window) == expectedCorner(pixmap), "The ground is another");
    require(window.size() == windowSize, "The picture has changed the window's size");

    QFile::remove(path);
    window.refreshSettings();
    require(drawnCorner(window) == expectedCorner(QPixmap()), "The colour is not back");
    return 0;
}
