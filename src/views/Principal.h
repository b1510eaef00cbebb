#pragma once

#include "platform/Grid.h"
#include "platform/IconSet.h"
#include "platform/PictureBox.h"
#include "platform/ScrImage.h"
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
    ScrImage* SCRImage1;
    PictureBox* ImgCaratula;
    std::array<QRadioButton*, 4> OptDatos;
    QCheckBox* ChckHaveIt;
    QToolBar* Toolbar;
    QAction* CmdModify;
    IconSet ImageListFrom;
    IconSet FormatIcon;

    void ChckHaveIt_Click();
    void GridTitles_HeaderClick(int col);
    void GridTitles_SelectionChange();
    void GridFiles_DblClick();
    void OptDatos_Click(int index);
    void ImgCaratula_DblClick();
    void BuscaPantalla();
    void BuscaCaratula();
    void BuscaMapa();
    void BuscaCodeSheet();
    // Fits a picture into the box of 3840 x 2880 twips, centred.
    void ShowScaled(const QString& path);

    // The screen file SCRImage1 was last given.
    QString ScreenFile() const { return SCRImage1->File(); }

private:
    void BuildLayout();
    void FitTitlesPane();
    void LookupSideFile(int option, int kind);
    void ShowScreen(const QString& path);
    void MarkOption(int option, bool found);

    QSplitter* split = nullptr;
};

} // namespace cintal
