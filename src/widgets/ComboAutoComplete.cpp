#include "widgets/ComboAutoComplete.h"

#include <QComboBox>
#include <QLineEdit>

namespace cintal {

int ComboAutoComplete(QComboBox* combo, int keyAscii, bool strict) {
    QLineEdit* edit = combo->lineEdit();
    if (!edit) return keyAscii;
    const QString text = edit->text();
    const bool selected = edit->hasSelectedText();
    const int start = selected ? edit->selectionStart() : edit->cursorPosition();
    QString candidate;
    if (keyAscii == 8) {
        if (start < 2) {
            edit->clear();
            return 0;
        }
        candidate = selected ? text.left(start - 1) : text.left(text.size() - 1).toUpper();
    } else if (keyAscii < 32 || keyAscii > 127) {
        return 0;
    } else {
        const QChar typed(keyAscii);
        candidate = selected ? text.left(start) + typed : (text + typed).toUpper();
    }
    const int found = combo->findText(candidate, Qt::MatchStartsWith);
    if (found < 0) return strict ? 0 : keyAscii;
    const QString item = combo->itemText(found);
    combo->setCurrentIndex(found);
    edit->setText(item);
    edit->setSelection(static_cast<int>(candidate.size()),
                       static_cast<int>(item.size() - candidate.size()));
    return 0;
}

} // namespace cintal
