#pragma once

#include "platform/Grid.h"
#include "platform/IconSet.h"
#include "views/Grids.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QRadioButton>
#include <QSplitter>
#include <QToolBar>
#include <array>

namespace cintal {

// The main window: the titles, the selected title's data, its files and its
// picture.
class Principal : public QMainWindow {
    Q_OBJECT
public:
    explicit Principal(QWidget* parent = nullptr);
    ~Principal() override;

    // Everything the program does at start. dbPath empty means the
    // catalogue beside the executable. False when the program must end.
    bool Form_Load(const QString& dbPath = {});

    TitleWindow Parts();

    Grid* GridTitles;
    Grid* GridFiles;
    QComboBox* ComboRegistro;
    QLabel* LabelNombre;
    QLabel* LabelCompany;
    QLabel* LabelYear;
    QLabel* LabelType;
    QLabel* SCRImage1;
    QLabel* ImgCaratula;
    std::array<QRadioButton*, 4> OptDatos;
    QCheckBox* ChckHaveIt;
    QToolBar* Toolbar;
    IconSet ImageListFrom;

    void ChckHaveIt_Click();
    void GridTitles_HeaderClick(int col);

private:
    void BuildLayout();
    void FitTitlesPane();

    QSplitter* split = nullptr;
};

} // namespace cintal
