#pragma once
// The window that moves the files of the title selected in the main window
// to another title, picked from the full list by a double click.

#include "platform/Grid.h"
#include "platform/IconSet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>

namespace cintal {

class Principal;

class FrmCambiaTitle : public QDialog {
    Q_OBJECT
public:
    explicit FrmCambiaTitle(Principal& main);

    void Form_Load();
    void GridTitles_DblClick();

    Grid* GridTitles;
    QComboBox* ComboRegistro;
    QCheckBox* ChckHaveIt;
    IconSet ImageListFrom;

private:
    Principal& main;
};

} // namespace cintal
