#pragma once

#include <QList>
#include <QString>

class QCheckBox;
class QColor;
class QDialog;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTabWidget;
class QWidget;

/// The settings dialog as the user finds it: by tab titles, row labels and button texts.
/// What is not there is null.
class DialogView
{
public:
    explicit DialogView(QDialog &dialog);

    QTabWidget *tabs() const;
    QWidget *page(const QString &title) const;
    /// Brings the page to the front and returns it.
    QWidget *showPage(const QString &title) const;

    QPushButton *okButton() const;
    QPushButton *cancelButton() const;

    QRadioButton *radio(const QString &text) const;
    QCheckBox *checkBox(const QString &text) const;
    QPushButton *colorButton(const QString &rowLabel) const;
    QPushButton *browseButton() const;
    QPushButton *clearImageButton() const;
    QLabel *imageFileLabel() const;
    QSpinBox *fontSize(const QString &rowLabel) const;

    /// The spin boxes of the Timer page between the section header with the text and the
    /// next one, from left to right.
    QList<QSpinBox *> spinBoxesUnder(const QString &header) const;
    QListWidget *presets() const;
    QStringList presetLabels() const;
    QList<int> presetSeconds() const;
    QPushButton *presetButton(const QString &text) const;

    QLabel *keyLabel(int row) const;
    QPushButton *setKeyButton(int row) const;
    QPushButton *clearKeyButton(int row) const;
    QPushButton *resetKeysButton() const;

    /// Lets the colour dialog behind the row's button pick @p color.
    void pick(const QString &rowLabel, const QColor &color) const;

private:
    QDialog &window;
};
