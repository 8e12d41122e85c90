#pragma once

#include <memory>

#include <QCoreApplication>
#include <QWidget>

class QLabel;

/// The "Output Preview" window: a picture of the Output window, on top of all others.
///
/// The window is made when it is first asked for. It is a window in its own right, without a
/// parent, and this object owns it.
class OutputPreview
{
    Q_DECLARE_TR_FUNCTIONS(OutputPreview)

public:
    /// @p output is not owned and must outlive this object.
    explicit OutputPreview(QWidget *output);

    /// Shows the preview, or hides it. Does nothing while the Output window is hidden.
    void toggle();
    /// Takes the picture again, if the preview is shown; closes it if the Output window is hidden.
    void refresh();

private:
    void makeWindow();

    QWidget *output;
    std::unique_ptr<QWidget> previewWindow;
    QLabel *previewLabel = nullptr;
};
