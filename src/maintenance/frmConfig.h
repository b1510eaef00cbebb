#pragma once
// The options: the emulators installed, the default one, one per format, and
// the purge of references to missing files. Every change is saved at once.

#include "maintenance/Emulators.h"

#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <array>
#include <functional>

namespace cintal {

class frmConfig : public QDialog {
    Q_OBJECT
public:
    explicit frmConfig(QWidget* parent = nullptr);

    void Form_Load();
    void List2_DblClick(int index);
    void Combo2_Click();
    void Combo1_Click(int index);
    void CmdLimpiaFiles_Click();

    QGroupBox* Frame1;
    QLabel* Label1;
    QLabel* Label2;
    QListWidget* List1;
    QListWidget* List2;
    QGroupBox* Frame2;
    std::array<QLabel*, Emulators::kFormats> Picture1;
    std::array<QComboBox*, Emulators::kFormats> Combo1;
    QComboBox* Combo2;
    QPushButton* CmdLimpiaFiles;

    // The file dialog: given the starting folder, the proposed file name and
    // the filter, gives the chosen path or nothing. Tests put their own here.
    std::function<QString(const QString& start, const QString& name, const QString& filter)>
        CommonDialog1;

private:
    bool loading = false;
};

} // namespace cintal
