#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QPushButton;

namespace cintal {

// "Importar registros": the common entry to the ways of bringing records in,
// each a button with what it does beside it.
class FrmAgregarDesde : public QDialog {
    Q_OBJECT
public:
    explicit FrmAgregarDesde(QWidget* parent = nullptr);

    // The disk scan.
    void Command1_Click();
    // The listing import.
    void Command2_Click();

    QPushButton* Command1;
    QPushButton* Command2;
    // A database of another program, whose format nothing here reads.
    QPushButton* Command3;
    QLabel* Label1;
    QLabel* Label2;
    QLabel* Label3;

    // Shows a window modally and returns when it is closed; tests put their
    // own here, so that no window waits for a person.
    std::function<void(QDialog&)> RunModal = [](QDialog& window) { window.exec(); };

    // What ran while the window was open, so that the main window refills
    // its titles as the window it opened would have.
    bool scanned = false;
    bool imported = false;
};

} // namespace cintal
