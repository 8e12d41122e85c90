#include "AboutDialog.h"

#include <QDesktopServices>
#include <QGraphicsDropShadowEffect>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include "Button.h"
#include "FormHelpers.h"
#include "Logo.h"
#include "Updater.h"
#include "Vendor.h"
#include "Version.h"

namespace {

constexpr int logoSize = 64;             // pixels
constexpr int updateButtonRestMs = 5000; // the update button's pause after a click

const QString cardStyle = QStringLiteral("QWidget#aboutCard {"
                                         "  background: qlineargradient(x1:0,y1:0,x2:0,y2:1,"
                                         "    stop:0 #2e2e2e, stop:1 #1a1a1a);"
                                         "  border: 2px solid #444444;"
                                         "  border-radius: 16px;"
                                         "}");
const QString crossStyle = QStringLiteral(
    "QPushButton { background:none; border:none; color:#888; font-size:20px; border-radius:4px; }"
    "QPushButton:hover { color:#ff6b6b; background:rgba(255,107,107,0.1); }");
const QString logoStyle = QStringLiteral("background:none;");
const QString titleStyle = QStringLiteral(
    "color:#ffffff; font-size:20px; font-weight:bold; letter-spacing:3px; background:none;");
const QString versionStyle =
    QStringLiteral("color:#aaaaaa; font-size:12px; font-weight:bold; letter-spacing:1px;"
                   " margin-top:4px; background:none;");
const QString taglineStyle =
    QStringLiteral("color:#ffffff; font-size:11px; letter-spacing:0.5px; background:none;");
const QString creditsStyle = QStringLiteral("color:#888888; font-size:10px; background:none;");
const QString lineStyle = QStringLiteral(
    "QFrame { background: qlineargradient(x1:0,y1:0,x2:1,y2:0,"
    "stop:0 transparent, stop:0.5 #555555, stop:1 transparent);border:none; max-height:1px; }");
const QString webSiteStyle =
    QStringLiteral("QPushButton { background:none; border:none; color:#22c55e;"
                   "  font-size:12px; font-weight:bold; letter-spacing:0.5px; }"
                   "QPushButton:hover { color:#4ade80; }");
const QString updateStyle = QStringLiteral(
    "QPushButton { background:rgba(34,197,94,0.1); border:1px solid rgba(34,197,94,0.3);"
    "  color:#22c55e; font-size:12px; font-weight:bold; padding:8px 24px;"
    "  border-radius:8px; letter-spacing:0.5px; }"
    "QPushButton:hover { background:rgba(34,197,94,0.2); border-color:rgba(34,197,94,0.5); }"
    "QPushButton:disabled { opacity:0.5; }");
const QString closeStyle =
    QStringLiteral("QPushButton { background:#2e2e2e; border:1px solid #555; color:#cccccc;"
                   "  font-size:12px; padding:7px 32px; border-radius:8px; }"
                   "QPushButton:hover { background:#3a3a3a; border-color:#777; color:#ffffff; }");

QPushButton *makeStyledButton(const QString &text, const QString &styleSheet)
{
    auto *button = new Button(text);
    button->setStyleSheet(styleSheet);
    return button;
}

QLabel *makeCentredLabel(const QString &text, const QString &styleSheet)
{
    auto *label = new QLabel(text);
    label->setAlignment(Qt::AlignCenter);
    label->setStyleSheet(styleSheet);
    return label;
}

// Scaled in device pixels, so that it is as sharp as the screen. Without the picture the
// label stays empty.
QPixmap logoPicture(qreal ratio)
{
    QPixmap picture(logoPath);
    if (picture.isNull())
        return picture;
    picture = picture.scaled((QSizeF(logoSize, logoSize) * ratio).toSize(), Qt::KeepAspectRatio,
                             Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

} // namespace

AboutDialog::AboutDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("About Velmora"));
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground);
    setFixedWidth(340);

    auto *card = new QWidget(this);
    card->setObjectName(QStringLiteral("aboutCard"));
    card->setStyleSheet(cardStyle);
    auto *shadow = new QGraphicsDropShadowEffect(card);
    shadow->setBlurRadius(40.0);
    shadow->setColor(QColor(0, 0, 0, 160));
    shadow->setOffset(0.0, 8.0);
    card->setGraphicsEffect(shadow);

    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(36, 20, 36, 28);
    column->setSpacing(0);

    QPushButton *crossBtn = makeStyledButton(QStringLiteral("×"), crossStyle);
    crossBtn->setFixedSize(28, 28);
    crossBtn->setAccessibleName(tr("Close"));
    connect(crossBtn, &QPushButton::clicked, this, &AboutDialog::accept);
    auto *crossRow = new QHBoxLayout;
    crossRow->addStretch();
    crossRow->addWidget(crossBtn);
    column->addLayout(crossRow);

    QLabel *logoLabel = makeCentredLabel(QString(), logoStyle);
    logoLabel->setPixmap(logoPicture(devicePixelRatioF()));
    logoLabel->setAccessibleName(tr("Velmora logo"));
    column->addWidget(logoLabel);
    column->addSpacing(8);

    column->addWidget(makeCentredLabel(tr("VELMORA"), titleStyle));
    column->addWidget(makeCentredLabel(tr("v%1").arg(QLatin1String(velmoraVersion)), versionStyle));
    column->addSpacing(14);

    column->addWidget(makeLine(lineStyle));
    column->addSpacing(12);

    column->addWidget(makeCentredLabel(tr("Professional Velmora for Events"), taglineStyle));
    column->addSpacing(6);
    const QString credits = QString::fromUtf8(vendorCreditLine1) + QLatin1Char('\n')
        + QString::fromUtf8(vendorCreditLine2);
    QLabel *creditsLabel = makeCentredLabel(credits, creditsStyle);
    creditsLabel->setTextFormat(Qt::PlainText); // a vendor's name may look like mark-up
    column->addWidget(creditsLabel);
    column->addSpacing(12);

    column->addWidget(makeLine(lineStyle));
    column->addSpacing(10);

    QPushButton *webSiteBtn = makeStyledButton(QLatin1String(vendorWebAddress), webSiteStyle);
    webSiteBtn->setAccessibleName(tr("Web site %1").arg(QLatin1String(vendorWebAddress)));
    connect(webSiteBtn, &QPushButton::clicked, this,
            [] { QDesktopServices::openUrl(QUrl(QLatin1String(vendorWebSite))); });
    column->addWidget(webSiteBtn, 0, Qt::AlignHCenter);
    column->addSpacing(10);

    column->addWidget(makeLine(lineStyle));
    column->addSpacing(12);

    QPushButton *updateBtn = makeStyledButton(tr("Check for Updates"), updateStyle);
    connect(updateBtn, &QPushButton::clicked, updateBtn, [updateBtn] {
        updateBtn->setEnabled(false);
        Updater::checkInteractively();
        // Whatever comes of the check; a card closed before then takes the timer with it.
        QTimer::singleShot(updateButtonRestMs, Qt::CoarseTimer, updateBtn,
                           [updateBtn] { updateBtn->setEnabled(true); });
    });
    column->addWidget(updateBtn, 0, Qt::AlignHCenter);
    column->addSpacing(16);

    QPushButton *closeBtn = makeStyledButton(tr("Close"), closeStyle);
    connect(closeBtn, &QPushButton::clicked, this, &AboutDialog::accept);
    column->addWidget(closeBtn, 0, Qt::AlignHCenter);

    // The margin leaves room for the shadow on the translucent ground.
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->addWidget(card);

    setModal(true);
}
