// The message on stage: a byte chooses UTF-8 or UTF-16 and how often a plain text is repeated, the
// rest is the text, which may be rich. Rich text is taken once: hundreds of paragraphs with margins
// of 99999 pixels add up to more than Qt's layout can count, and it does not come to an
// end.
//
// - The message line holds the text as it was set, and nothing else of the window changes: not
//   its size, and not the figure.
// - The window can be drawn.
// - A cleared line is empty.

#include <algorithm>

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QTextDocument>

#include "AppSettings.h"
#include "Fuzzing.h"
#include "OutputWindow.h"

namespace {

constexpr int mostCharacters = 20000;
constexpr QSize windowSize(480, 270);

struct Stage
{
    Stage()
    {
        window.resize(windowSize);
        window.show();
        QCoreApplication::processEvents();
    }

    QLabel &described(const QString &description)
    {
        const QList<QLabel *> labels = window.findChildren<QLabel *>();
        for (QLabel *label : labels) {
            if (label->accessibleDescription() == description)
                return *label;
        }
        require(false, "No label for", description);
        return *labels.constFirst();
    }

    AppSettings settings;
    OutputWindow window{&settings};
};

QString repeated(const QString &text, int times)
{
    if (Qt::mightBeRichText(text))
        return text;
    const qsizetype most = mostCharacters / std::max(text.size(), qsizetype(1));
    return text.repeated(std::min(qsizetype(times), most));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static auto *const stage = new Stage;
    OutputWindow &window = stage->window;
    static QLabel &message = stage->described(QStringLiteral("Message"));
    static const QLabel &figure = stage->described(QStringLiteral("Timer"));
    const QString figureText = figure.text();
    const QRect figurePlace = figure.geometry();

    Input input(data, size);
    const int choices = input.choice(256);
    const bool wide = (choices & 1) != 0;
    const int times = choices < 248 ? 1 : 1 << (2 * (choices & 7)); // up to 16384, once in 32
    const QString text = repeated(textOf(input.rest(), wide), times);

    window.setMessage(text);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QImage picture(windowSize, QImage::Format_RGB32);
    window.render(&picture);
    require(message.text() == text, "The line holds another text");
    require(window.size() == windowSize, "The message has changed the window's size");
    require(figure.text() == figureText, "The message has changed the figure");
    require(figure.width() == figurePlace.width(), "The message has changed the figure's width");

    window.clearMessage();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    require(message.text().isEmpty(), "The cleared line holds a text");
    return 0;
}
