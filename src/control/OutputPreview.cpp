#include "OutputPreview.h"

#include <QLabel>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

const QString previewStyle = QStringLiteral("background-color:#111;");

} // namespace

OutputPreview::OutputPreview(QWidget *output)
    : output(output)
{
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
    QPixmap picture = output->grab().scaled((QSizeF(previewLabel->size()) * ratio).toSize(),
                                            Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    previewLabel->setPixmap(picture);
}
