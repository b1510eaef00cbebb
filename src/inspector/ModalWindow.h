#pragma once
// A window of the inspector family closes through its Form_Unload, whether
// by its close box or by Escape, and may refuse to close.

#include <QCloseEvent>
#include <QDialog>

namespace cintal {

class ModalWindow : public QDialog {
public:
    using QDialog::QDialog;
    // The closing of the window; false when it must stay open.
    virtual bool Form_Unload() = 0;

protected:
    void closeEvent(QCloseEvent* event) override {
        if (unloading) return event->accept();
        if (!Form_Unload()) return event->ignore();
        unloading = true;
        event->accept();
    }
    void reject() override {
        if (!unloading && !Form_Unload()) return;
        unloading = true;
        QDialog::reject();
    }

    bool unloading = false;
};

} // namespace cintal
