#pragma once

#include "catalogue/Files.h"
#include "widgets/Grid.h"
#include "widgets/Grids.h"
#include "widgets/IconSet.h"
#include "widgets/PictureBox.h"
#include "widgets/ScrImage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QRadioButton>
#include <QSplitter>
#include <QToolBar>
#include <array>
#include <functional>

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
    // "(de la cinta)" over the screen when it came from inside a file.
    QLabel* LabelScreenSource;
    PictureBox* ImgCaratula;
    std::array<QRadioButton*, 4> OptDatos;
    QCheckBox* ChckHaveIt;
    QCheckBox* ChckSinIdentificar; // titles with a file no DAT knows
    QToolBar* Toolbar;
    QAction* CmdSearch;
    QAction* CmdModify;
    QAction* Command3;
    QAction* Command7;
    QAction* CmdLimpiaEmpty;
    QAction* Command2;
    QAction* CmdRepetidos;  // "Archivos repetidos"
    QAction* CmdIdentifica; // "Identificar colección"
    QAction* ImportaWOS;
    QAction* CmdImportar; // "Importar registros", the entry to every import
    QMenu* Menupop;
    QAction* mnuAddDBfile;
    QAction* mnuInfoseek;
    QAction* MnuTipShop;
    QAction* mnuDelTitle;
    QAction* mnuCambiaTitle; // on when the selected title has files
    QAction* mnuIdentifica;  // "Identificar colección...", as the toolbar's
    QMenu* Menupop2;
    QAction* mnuDelFile;
    QAction* mnuRenombra;
    QAction* mnuTap2Tzx;
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

    void CmdSearch_Click();
    void CmdModify_Click();
    void Command2_Click();
    void Command3_Click();
    void Command7_Click();
    void CmdRepetidos_Click();
    void CmdIdentifica_Click();
    // Selects the title's row, as a click would; false when it isn't listed.
    bool SelectTitleId(qint64 titleId);
    void ImportaWOS_Click();
    void CmdImportar_Click();
    void CmdLimpiaEmpty_Click();
    void AddFileByHand();
    void mnuAddDBfile_Click() { AddFileByHand(); }
    void mnuInfoseek_Click();
    void MnuTipShop_Click();
    void mnuDelTitle_Click();
    void mnuCambiaTitle_Click();
    void mnuDelFile_Click();
    void mnuRenombra_Click();
    void mnuTap2Tzx_Click();
    // A file given on the command line, as a double click in the file
    // manager gives it: a tape opens in the inspector, with its title when
    // the catalogue holds it; anything else is told, over the main window.
    void OpenGivenFile(const QString& file);

    // The file dialog of AddFileByHand: given the filter, gives the chosen
    // path or nothing. Tests put their own choice here.
    std::function<QString(const QString& filter)> ChooseFile;
    // Shows a window modally and returns when it is closed. Tests put their
    // own here, so that no window waits for a person.
    std::function<void(QDialog&)> RunModal = [](QDialog& window) { window.exec(); };
    // The filter of AddFileByHand, as the collection's users know it.
    static const QString kAddFileFilter;

    // The screen file SCRImage1 was last given.
    QString ScreenFile() const { return SCRImage1->File(); }

private:
    void BuildLayout();
    void FitTitlesPane();
    void BuildCommands();
    void LookupSideFile(int option, SideKind kind);
    void OpenAddress(const QString& address);
    void PaintTitleRow(const QColor& back, const QColor& fore);
    void ShowScreen(const QString& path);
    // Shows the first screen found inside the title's files; false if none.
    bool ShowScreenFromFiles();
    // No title is selected any more: nothing of the last one stays.
    void ForgetTitle();
    void MarkOption(int option, bool found);

    QSplitter* split = nullptr;
};

} // namespace cintal
