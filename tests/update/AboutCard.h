#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>

#include "AboutDialog.h"

/// What the user sees of the About card, found in the dialog's layouts.
class AboutCard
{
public:
    explicit AboutCard(const AboutDialog &dialog)
        : card(dialog.findChild<QWidget *>("aboutCard"))
    {
    }

    QWidget *widget() const { return card; }
    QBoxLayout *column() const { return qobject_cast<QBoxLayout *>(card->layout()); }
    QLayoutItem *item(int index) const { return card->layout()->itemAt(index); }

    QBoxLayout *crossRow() const { return qobject_cast<QBoxLayout *>(item(0)->layout()); }
    QAbstractButton *crossButton() const { return button(crossRow()->itemAt(1)); }
    QLabel *logo() const { return qobject_cast<QLabel *>(item(1)->widget()); }
    QAbstractButton *webSiteButton() const { return button(item(14)); }
    QAbstractButton *updateButton() const { return button(item(18)); }
    QAbstractButton *closeButton() const { return button(item(20)); }

private:
    static QAbstractButton *button(QLayoutItem *item)
    {
        return qobject_cast<QAbstractButton *>(item->widget());
    }

    QWidget *card;
};
