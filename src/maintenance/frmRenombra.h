#pragma once

#include "maintenance/Renamer.h"

#include <QDialog>
#include <functional>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace cintal {

class Grid;
class ScrImage;

// "Renombra archivo": the file selected in the main window's file grid gets
// a new name, with the side files left ticked.
class frmRenombra : public QDialog {
    Q_OBJECT
public:
    frmRenombra(Grid* titles, Grid* files, QWidget* parent = nullptr);

    void Command1_Click();

    // The main window looks for the picture again after a rename.
    std::function<void()> BuscaPantalla;

    Renamer renamer;
    QLabel* Label3;
    QLineEdit* Text1;
    QLabel* Label1;
    QListWidget* List1;
    ScrImage* SCRImage1;
    QPushButton* Command1;
    QPushButton* Command2;
    QString Tag; // Command1's: the result of the rename

private:
    void Form_Load();

    Grid* GridTitles;
    Grid* GridFiles;
};

} // namespace cintal
