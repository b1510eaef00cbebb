#pragma once
// What the inspector and the title dialog share of a catalogue pane: the
// publisher box and the cells of the main window's title row.

#include "widgets/Grid.h"
#include "widgets/Grids.h"

#include <QComboBox>
#include <QString>
#include <map>

class QGroupBox;
class QLabel;
class QLineEdit;

namespace cintal {

// The boxes of a title's record, as both windows lay them out.
struct TitleBoxes {
    QGroupBox* Frame1;
    std::map<int, QLabel*> LabelInfo;
    QLineEdit* TextName;
    QComboBox* ComboPub;
    QComboBox* ListYear;
    QComboBox* ComboTipo;
    // The publisher's id as text, as leaving ComboPub last settled it.
    QString ComboPubTag = QStringLiteral("0");
};

} // namespace cintal

namespace cintal::TitlePane {

// The publisher register from slot 1, in the order shown to users.
void FillPublishers(QComboBox* combo);

// Puts the title's publisher into the box: the name as the title row shows
// it, the IdPub as the store holds it. Leaving the box without changing that
// text keeps them as they are.
void ShowPublisher(QComboBox* combo, const QString& name, qint64 titleId);

// What leaving the publisher box does: a text the user changed becomes an
// id, an unknown publisher is registered at the user's wish (the box then
// takes the stored name); on No, or a text left as shown, the stored
// publisher stays and the box shows it. Returns the id as text, "0" for none.
QString PublisherLostFocus(QComboBox* combo);

// The selected title row, empty (id 0) without a selection.
TitleRef SelectedTitle(const Grid* titles);
// Writes a cell of the selected title row, keeping the row's colours.
void SetSelectedCell(Grid* titles, const char* key, const QString& text, int icon = -1);

// Fills a year list: an empty item, then 1980 to 2030, nothing selected.
void FillYears(QComboBox* combo);
// The numeric value that begins a year text; 0 when none does.
int YearValue(const QString& text);

} // namespace cintal::TitlePane
