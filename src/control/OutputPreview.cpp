#include "OutputPreview.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>
#include <QWindow>

namespace {

const QString previewStyle = QStringLiteral("background-color:#111;");

} // namespace

OutputPreview::OutputPreview(QWidget *output)
    : output(output)
{
    output->installEventFilter(this);
}

void OutputPreview::toggle()
{
    if (!output->isVisible())
        return;
    if (!previewWindow)
        makeWindow();
    previewWindow->setVisible(!previewWindow->isVisible());
}

void OutputPreview::makeWindow()
{
    previewWindow = std::make_unique<QWidget>(nullptr, Qt::Window | Qt::WindowStaysOnTopHint);
    previewWindow->setWindowTitle(tr("Output Preview"));
    previewWindow->resize(640, 360);
    previewWindow->setStyleSheet(previewStyle);

    previewLabel = new QLabel;
    previewLabel->setAlignment(Qt::AlignCenter);
    previewLabel->setStyleSheet(previewStyle);
    previewLabel->setAccessibleName(tr("Picture of the Output window"));

    auto *layout = new QVBoxLayout(previewWindow.get());
    // A label is at least as large as its picture; that may not keep the window large.
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(previewLabel);
}

// A picture taken twice a second, not a second renderer.
void OutputPreview::refresh()
{
    if (!previewWindow || !previewWindow->isVisible())
        return;
    if (!output->isVisible()) {
        // Not hide(): only a close counts as the last window's, and the Control window may
        // be closed already. A process without a window would be left behind.
        previewWindow->close();
        return;
    }
    // Scaled in the label's device pixels, so that it fills the label on any screen.
    const qreal ratio = previewLabel->devicePixelRatioF();
    const QSize space = (QSizeF(previewLabel->size()) * ratio).toSize();
    // A change made in this turn of the event loop has its request to be painted still queued.
    QCoreApplication::sendPostedEvents(output, QEvent::UpdateRequest);
    if (!outputChanged && output->windowHandle()->isExposed() && space == pictureSpace
        && ratio == previewLabel->pixmap().devicePixelRatio())
        return;
    QPixmap picture = output->grab().scaled(space, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    previewLabel->setPixmap(picture);
    pictureSpace = space;
    outputChanged = false; // the picture's own events do not count
}

// Whatever changes what the window or anything in it shows asks the window, while it is exposed, to
// be painted. Its other events are rare enough to be taken for a change, too.
bool OutputPreview::eventFilter(QObject *watched, QEvent *event)
{
    outputChanged = true;
    return QObject::eventFilter(watched, event);
}
