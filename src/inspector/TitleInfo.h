#pragma once
// The record of a title without a tape to inspect: its name, publisher,
// year, type and the origin of the record, and its files. Closing keeps what
// was changed in the title's row and in the main window's title row.

#include "inspector/ModalWindow.h"
#include "inspector/TitlePane.h"
#include "widgets/Grid.h"
#include "widgets/IconSet.h"

#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <map>

namespace cintal {

class TitleInfo : public ModalWindow, public TitleBoxes {
    Q_OBJECT
public:
    // titles is the main window's title grid, whose selected row is shown;
    // icons are the pictures of the record's origins.
    TitleInfo(Grid* titles, const IconSet* icons, QWidget* parent = nullptr);

    void Form_Load();
    // False when the window must stay open (a year that isn't one: four
    // digits from 1950 on).
    bool Form_Unload() override;
    void ComboPub_LostFocus();

    QComboBox* vbalCboEx1;
    QLabel* Estado;
    Grid* GridFiles;

protected:
private:
    Grid* mainTitles;
    const IconSet* icons;
    // The type as the box showed it at load: only a changed one is stored.
    QString shownType;
    // A box of the window's own is up: the focus leaving the publisher box
    // for it asks nothing more.
    bool asking = false;
};

} // namespace cintal
