#pragma once
// The tape inspector: a title's catalogue record on the left, the archive
// information of one of its tapes on the right, the title's files, the path
// and the tape's blocks below. The window gathers and shows; Inspector does
// the work.

#include "inspector/Inspector.h"
#include "inspector/ModalWindow.h"
#include "inspector/TitlePane.h"
#include "widgets/Grid.h"
#include "widgets/ScrImage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <array>
#include <functional>
#include <map>
#include <optional>

namespace cintal {

class TapeSound;

class Info : public ModalWindow, public TitleBoxes {
    Q_OBJECT
public:
    // titles and files are the main window's grids: the selected title is
    // the one shown, and both are written back when the window saves.
    Info(Grid* titles, Grid* files, QWidget* parent = nullptr);
    ~Info() override;

    void Form_Load();
    // The window on a tape the catalogue doesn't hold: the tape pane alone,
    // whose archive information can still be edited and saved.
    void Form_LoadTape(const QString& path);
    // The file row Form_Load opens, from 1.
    void StartAt(int row) { startRow = row; }
    // The closing of the window; false when the user chose to stay.
    bool Form_Unload() override;

    virtual void FillGrid();
    // The columns of a block list, and one block written into its row; the
    // columns stand in the order SetupGridTZX adds them.
    static void SetupGridTZX(Grid& grid);
    static void WriteBlockRow(Grid& grid, int row, const Inspector::BlockRow& block,
                              std::optional<QColor> back = {});
    void GridFiles_SelectionChange();
    // What a selection in the file list does once it knows the file's path.
    void OpenFile(const QString& path);
    void ShowArchiveInfo();
    void TextInfo_KeyUp();
    int TextInfo_KeyPress(Box box, int key);
    void ComboLang_LostFocus();
    void ComboOrigin_LostFocus();
    void ComboPub_LostFocus();
    void CmdDBSave_Click();
    // True when the tape was written.
    bool CmdTZXSave_Click();
    void CommandaDB_Click(Box box);
    void CommandATZX_Click(Box box);
    void Command3_Click();
    void CommandSube_Click();
    void CommandBaja_Click();
    void AddBlock_Click(Attachment type);
    // The preview follows the selected block.
    void GridTZX_SelectionChange();
    void CommandExtraer_Click();

    // The text of a box of the tape pane, lines ending in CR LF.
    QString BoxText(Box box) const;
    void SetBoxText(Box box, const QString& text);
    // The pending flag of the tape pane: true when nothing is pending.
    bool TZXSaveTag() const { return !logic.Pending(); }

    Inspector& Logic() { return logic; }

    // The file dialog of the add buttons: given the caption and the filter,
    // gives the chosen path or nothing. Tests put their own choice here.
    std::function<QString(const QString& caption, const QString& filter)> ChooseFile;
    // The save dialog of "Extraer": given the proposed path, the chosen one.
    std::function<QString(const QString& proposed)> ChooseSaveFile;

signals:
    // The title's row and its cells in the main window took the pane's values.
    void TitleRowSaved();

public:
    // Catalogue pane, besides its TitleBoxes.
    QLabel* Label2;
    QComboBox* ComboEstado;
    std::map<Box, QToolButton*> CommandaDB;

    // Tape pane.
    QGroupBox* FrameInfo;
    std::map<Box, QWidget*> TextInfo;
    std::map<int, QLabel*> Label1;
    QComboBox* ComboLang;
    QComboBox* ComboOrigin;
    std::map<Box, QToolButton*> CommandATZX;
    QGroupBox* Frame2;
    std::array<QRadioButton*, 3> OptDatos;

    // Below.
    Grid* GridFiles;
    Grid* GridTZX;
    QLineEdit* TextPath;
    QPushButton* CmdTZXSave;
    QPushButton* CmdDBSave;
    QPushButton* Command3;
    QToolButton* CommandSube;
    QToolButton* CommandBaja;
    QPushButton* Command2;
    QPushButton* Command5;
    QPushButton* Command6;
    QPushButton* Command7;
    QPushButton* CommandExtraer;
    // "Exportar WAV..." and "Reproducir", beside the buttons of the blocks.
    TapeSound* Sound;
    QCheckBox* Check1;
    QCheckBox* Check2;
    // The block list and what the selected block holds, side by side.
    QSplitter* SplitBlocks;
    QGroupBox* FramePreview;
    QLabel* LabelContenido;
    QStackedWidget* PreviewStack;
    ScrImage* ScrPreview;
    QLabel* PicturePreview;
    QPlainTextEdit* TextPreview;

    bool AsciiOnly = true;

protected:
    // The compare window is this window reduced, with a second list beside
    // the blocks: it builds on the same panes and the same logic, and
    // differs where these say.

    // The file row opened when the window opens.
    virtual int FirstFileRow() const { return startRow; }
    // The block (from 1) of the selected row of the block list, 0 for none.
    virtual int SelectedBlock() const { return GridTZX->SelectedRow(); }
    // The source list, filled and set from the title's cell; the compare
    // window has none, and so keeps the stored source when it saves.
    virtual void ShowSource(int estado);
    // After the block list has its columns.
    virtual void FitBlockList();
    // The last step of Form_Load.
    virtual void Loaded() {}
    // What closing or another file asks when the tape is pending.
    virtual QString PendingQuestion() const;
    // Answering Sí to that question; true when the tape was written.
    virtual bool SaveOpenTape() { return CmdTZXSave_Click(); }
    // "Guardar Info" from its second step: the save, the read back, the file
    // row. True when the tape was written.
    bool SaveTapeAndRow();
    // Before the open tape goes: asks whether to save what is pending.
    // False when the user stays with it (Cancelar, or a save not done).
    bool SettlePending();
    // The title's row and cells.
    void SaveTitle();

    Grid* mainTitles;
    Grid* mainFiles;
    Inspector logic;
    QVBoxLayout* leftColumn = nullptr;
    QHBoxLayout* blocksRow = nullptr;

private:
    void BuildLayout();
    void Wire();
    Inspector::BoxTexts Boxes() const;
    void UpdateSaveButton();
    // A tape inside an archive is shown, never changed.
    void ShowReadOnly();
    void MoveSelectedBlock(bool up);
    // The typing limit of a box, 0 for none.
    static int BoxLimit(Box box);
    void SetTitleCell(const char* key, const QString& text, int icon = -1);

    bool closing = false;
    int startRow = 1;
    // A tape outside the catalogue: no title, no file row.
    bool tapeOnly = false;
    // The row of the file list whose file is open.
    int openRow = 0;
    bool reselecting = false;
};

} // namespace cintal
