#pragma once

#include <memory>

#include <QObject>
#include <QSize>
#include <QWidget>

class QLabel;

/// The "Output Preview" window: a picture of the Output window, on top of all others.
///
/// The window is made when it is first asked for. It is a window in its own right, without a
/// parent, and this object owns it.
class OutputPreview : public QObject
{
    Q_OBJECT

public:
    /// @p output is not owned and must outlive this object.
    explicit OutputPreview(QWidget *output);

    /// Shows the preview, or hides it. Does nothing while the Output window is hidden.
    void toggle();
    /// Takes the picture again, if the preview is shown and there is anything new to see; closes
    /// it if the Output window is hidden.
    void refresh();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void makeWindow();

    QWidget *output;
    std::unique_ptr<QWidget> previewWindow;
    QLabel *previewLabel = nullptr;
    QSize pictureSpace; // device pixels that the last picture was taken for
    bool outputChanged = true;
};
