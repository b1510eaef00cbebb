#pragma once

#include "catalogue/ProgressSink.h"

#include <QLabel>
#include <QWidget>

namespace cintal {

// Stands on the screen while the program starts and reads its titles.
class frmSplash : public QWidget, public ProgressSink {
    Q_OBJECT
public:
    explicit frmSplash(QWidget* parent = nullptr);

    void SetHeading(const QString& text) override;
    void SetCount(const QString& text) override;

    QLabel* lblProductName;
    QLabel* lblVersion;
    QLabel* TextImport;
    QLabel* TextImport2;

protected:
    void keyPressEvent(QKeyEvent* e) override;
};

} // namespace cintal
