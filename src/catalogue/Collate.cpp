#include "catalogue/Collate.h"

#include <QLocale>

namespace cintal {

QCollator TextCollator() {
    QCollator c(QLocale(QLocale::Spanish, QLocale::Spain));
    c.setCaseSensitivity(Qt::CaseInsensitive);
    c.setNumericMode(true);
    c.setIgnorePunctuation(false);
    return c;
}

std::vector<QCollatorSortKey> SortKeys(const QCollator& c, const std::vector<QString>& texts) {
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (const QString& t : texts)
        keys.push_back(c.sortKey(t));
    return keys;
}

} // namespace cintal
