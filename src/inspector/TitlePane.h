#pragma once
// What the inspector and the title dialog share of a catalogue pane: the
// publisher box and the cells of the main window's title row.

#include "platform/Grid.h"

#include <QComboBox>
#include <QString>

namespace cintal::TitlePane {

// The publisher register from slot 1, in the order shown to users.
void FillPublishers(QComboBox* combo);

// What leaving the publisher box does: the text becomes an id, an unknown
// publisher is registered at the user's wish (the box then takes the stored
// name, or empties on No). Returns the id as text, "0" for none.
QString PublisherLostFocus(QComboBox* combo);

// The text of a cell of the selected title row, empty without a selection.
QString SelectedCell(const Grid* titles, const char* key);
// Writes a cell of the selected title row, keeping the row's colours.
void SetSelectedCell(Grid* titles, const char* key, const QString& text, int icon = -1);

// Fills a year list: an empty item, then 1980 to 2030, nothing selected.
void FillYears(QComboBox* combo);
// The numeric value that begins a year text; 0 when none does.
int YearValue(const QString& text);

} // namespace cintal::TitlePane
