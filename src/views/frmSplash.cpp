#include "views/frmSplash.h"

#include "catalogue/Comunes.h"
#include "widgets/Pictures.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace cintal {

frmSplash::frmSplash(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setObjectName("frmSplash");
    setAttribute(Qt::WA_DeleteOnClose, false);
    setFixedSize(420, 220);
    setStyleSheet("QWidget#frmSplash { background: #1F2A30; border: 1px solid #0C1114; }"
                  "QLabel { color: #ECEFF1; }");

    auto* icon = new QLabel(this);
    icon->setPixmap(Pictures::AppIcon().pixmap(48, 48));
    lblProductName = new QLabel(Comunes::kAppTitle, this);
    QFont big = lblProductName->font();
    big.setPointSize(26);
    big.setBold(true);
    lblProductName->setFont(big);
    lblVersion = new QLabel(QStringLiteral("Versión %1.%2.%3 Beta")
                                .arg(Comunes::kVersionMajor)
                                .arg(Comunes::kVersionMinor)
                                .arg(Comunes::kVersionRevision),
                            this);
    TextImport = new QLabel(this);
    TextImport2 = new QLabel(this);

    // The four colours of the Spectrum's stripe.
    auto* stripe = new QWidget(this);
    stripe->setFixedHeight(6);
    stripe->setStyleSheet("background: qlineargradient(x1:0, y1:0, x2:1, y2:0,"
                          " stop:0 #D80000, stop:0.25 #D80000, stop:0.2501 #D8D800,"
                          " stop:0.5 #D8D800, stop:0.5001 #00D800, stop:0.75 #00D800,"
                          " stop:0.7501 #00D8D8, stop:1 #00D8D8);");

    auto* top = new QHBoxLayout;
    top->addWidget(icon);
    top->addWidget(lblProductName, 1);
    auto* progress = new QHBoxLayout;
    progress->addWidget(TextImport);
    progress->addWidget(TextImport2, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 16);
    layout->addLayout(top);
    layout->addWidget(lblVersion);
    layout->addStretch(1);
    layout->addWidget(stripe);
    layout->addLayout(progress);
}

void frmSplash::SetHeading(const QString& text) {
    TextImport->setText(text);
}

void frmSplash::SetCount(const QString& text) {
    TextImport2->setText(text);
}

void frmSplash::keyPressEvent(QKeyEvent* e) {
    e->accept();
    close();
}

} // namespace cintal
