#pragma once
// The window that moves the files of the title selected in the main window
// to another title, picked from the full list by a double click.

#include "widgets/Grid.h"
#include "widgets/IconSet.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <functional>

namespace cintal {

class FrmCambiaTitle : public QDialog {
    Q_OBJECT
public:
    // mainTitles is the main window's title grid, whose selected title gives
    // its files; moved runs once they have moved, with that title's id, for
    // the main window to follow: it stands above this window, which can't
    // reach it.
    FrmCambiaTitle(QWidget* parent, const Grid& mainTitles,
                   std::function<void(qint64 oldId)> moved);

    void Form_Load();
    void GridTitles_DblClick();

    Grid* GridTitles;
    QComboBox* ComboRegistro;
    QCheckBox* ChckHaveIt;
    IconSet ImageListFrom;

private:
    const Grid& mainTitles;
    std::function<void(qint64 oldId)> moved;
};

} // namespace cintal
