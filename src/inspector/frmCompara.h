#pragma once
// The inspector's reduced twin, which compares: the title and one of its
// tapes as in the inspector, and beside its blocks those of another tape,
// aligned block by block and painted by what differs.

#include "inspector/Info.h"
#include "tape/Compare.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace cintal {

class frmCompara : public Info {
    Q_OBJECT
public:
    frmCompara(Grid* titles, Grid* files, QWidget* parent = nullptr);

    void FillGrid() override;
    void Command8_Click();
    // Chooses what the right-hand list shows: an index of ComboCompara.
    void ComboCompara_Click(int index);
    // Opens any tape on the right.
    void CompareWith(const QString& path);
    // Reads the right-hand tape, plain or inside an archive.
    void ReadOther(const QString& path);
    bool PendingClear() const { return !logic.Pending(); }

    QPushButton* Command8;
    QPushButton* Command9;
    QPushButton* Command10;
    QPlainTextEdit* ggg9;
    QPlainTextEdit* fff9;
    QLabel* LabelCompara;
    QComboBox* ComboCompara;
    Grid* GridTZX2;
    QLabel* LabelSummary;
    QLabel* LabelArchive;
    // The file of the tape on the left, above its list.
    QLabel* LabelCintaA;
    // A tape read in part: its lost blocks would pass for blocks of one side.
    QLabel* LabelAviso;
    // The one scroll bar of both lists.
    QScrollBar* ScrollBoth;
    // The window's panes, which scroll on a screen smaller than they are.
    QScrollArea* Panes;

    // The file dialog of "Otro archivo...": the chosen path or nothing.
    std::function<QString()> ChooseTape;

    // The colours of the rows that differ.
    static QColor ChangedColour();
    static QColor OnlyAColour();
    static QColor OnlyBColour();

    const Comparison& Result() const { return result; }

protected:
    int FirstFileRow() const override;
    int SelectedBlock() const override;
    void ShowSource(int) override { ComboEstado->clear(); }
    // The block lists take their widths in FitPositions.
    void FitBlockList() override {}
    void Loaded() override;
    QString PendingQuestion() const override;
    // There is no name box to copy first.
    bool SaveOpenTape() override { return SaveTapeAndRow(); }

private:
    void FillCompareList();
    void Reduce();
    void BuildPair();
    void WrapInScrollArea();
    void FitPositions();

    TZXTape other;
    QString otherPath;
    Comparison result;
    bool filling = false;
};

} // namespace cintal
