#include "inspector/TitlePane.h"

#include "catalogue/Collate.h"
#include "catalogue/Comunes.h"
#include "catalogue/Titles.h"

#include <algorithm>

namespace cintal::TitlePane {

void FillPublishers(QComboBox* combo) {
    std::vector<QString> names;
    for (std::size_t i = 1; i < Comunes::PublisherNames.size(); ++i)
        if (!Comunes::PublisherNames[i].isEmpty()) names.push_back(Comunes::PublisherNames[i]);
    const QCollator collator = TextCollator();
    std::stable_sort(names.begin(), names.end(),
                     [&](const QString& a, const QString& b) { return collator(a, b); });
    combo->clear();
    for (const QString& n : names)
        combo->addItem(n);
}

namespace {
const char* const kStoredName = "storedPublisher";
const char* const kStoredId = "storedIdPub";

void SetBoxText(QComboBox* combo, const QString& text) {
    combo->setCurrentIndex(combo->findText(text, Qt::MatchExactly));
    combo->setEditText(text);
}
} // namespace

void ShowPublisher(QComboBox* combo, const QString& name, qint64 titleId) {
    combo->setProperty(kStoredName, name);
    combo->setProperty(kStoredId, TitleIdPub(titleId));
    combo->setCurrentIndex(-1);
    combo->setEditText(name);
}

QString PublisherLostFocus(QComboBox* combo) {
    const QString storedName = combo->property(kStoredName).toString();
    const qint64 storedId = combo->property(kStoredId).toLongLong();
    QString text = combo->currentText();
    // A title is never asked about the publisher it already has, whatever
    // its name: only what the user typed or copied is looked up.
    if (text == storedName) return QString::number(storedId);
    bool added = false;
    const qint64 id = ResolvePublisher(text, &added);
    if (id < 0) {
        SetBoxText(combo, storedName);
        return QString::number(storedId);
    }
    if (added) FillPublishers(combo);
    if (added || text != combo->currentText()) SetBoxText(combo, text);
    return QString::number(id);
}

TitleRef SelectedTitle(const Grid* titles) {
    return titles ? Grids::SelectedTitle(*titles) : TitleRef();
}

void SetSelectedCell(Grid* titles, const char* key, const QString& text, int icon) {
    const int row = titles ? titles->SelectedRow() : 0;
    if (row < 1) return;
    const int col = titles->ColumnIndex(key);
    if (col < 1) return;
    const QColor back = titles->CellBackColor(row, col);
    const QColor fore = titles->CellForeColor(row, col);
    titles->CellDetails(row, col, text, titles->CellAlignment(row, col), icon,
                        back.isValid() ? std::optional<QColor>(back) : std::nullopt,
                        fore.isValid() ? std::optional<QColor>(fore) : std::nullopt);
}

void FillYears(QComboBox* combo) {
    combo->clear();
    combo->addItem(QString());
    for (int year = 1980; year <= 2030; ++year)
        combo->addItem(QString::number(year));
    // A list just filled has no selection until something picks one.
    combo->setCurrentIndex(-1);
}

int YearValue(const QString& text) {
    const QString t = text.trimmed();
    int digits = 0;
    while (digits < t.size() && t[digits].isDigit())
        ++digits;
    return t.left(digits).toInt();
}

} // namespace cintal::TitlePane
