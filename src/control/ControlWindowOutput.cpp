#include "ControlWindow.h"

#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include "OutputWindow.h"
#include "ScreenPlacement.h"

namespace {

const QString previewStyle = QStringLiteral("background-color:#111;");

} // namespace

void ControlWindow::toggleOutput()
{
    if (output->isVisible()) {
        output->hide();
        offerOutput(true);
        return;
    }
    showOnOtherScreen(*output, *this);
    offerOutput(false);
}

// What the button offers next: to show the Output window, or to hide it.
void ControlWindow::offerOutput(bool showing)
{
    outputToggleBtn->setText(showing ? tr("▶  Show Output Window") : tr("■  Hide Output Window"));
    outputToggleBtn->setAccessibleName(showing ? tr("Show Output Window")
                                               : tr("Hide Output Window"));
}

void ControlWindow::togglePreview()
{
    if (!output->isVisible())
        return;
    if (!previewWindow) {
        previewWindow = new QWidget(nullptr, Qt::Window | Qt::WindowStaysOnTopHint);
        previewWindow->setWindowTitle(tr("Output Preview"));
        previewWindow->resize(640, 360);
        previewWindow->setStyleSheet(previewStyle);

        previewLabel = new QLabel;
        previewLabel->setAlignment(Qt::AlignCenter);
        previewLabel->setStyleSheet(previewStyle);
        previewLabel->setAccessibleName(tr("Picture of the Output window"));

        auto *layout = new QVBoxLayout(previewWindow);
        // A label is at least as large as its picture; that may not keep the window large.
        layout->setSizeConstraint(QLayout::SetNoConstraint);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(previewLabel);
    }
    previewWindow->setVisible(!previewWindow->isVisible());
}

// A picture taken twice a second, not a second renderer.
void ControlWindow::refreshPreview()
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
