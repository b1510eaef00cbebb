#include "catalogue/Collate.h"

#include <QHash>
#include <QLocale>
#include <algorithm>
#include <numeric>

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

std::vector<int> SortRanks(const QCollator& c, const std::vector<QString>& texts) {
    std::vector<int> distinctOf(texts.size());
    std::vector<QString> distinct;
    {
        QHash<QString, int> seen;
        seen.reserve(static_cast<qsizetype>(std::min<std::size_t>(texts.size(), 1 << 20)));
        for (std::size_t i = 0; i < texts.size(); ++i) {
            auto it = seen.constFind(texts[i]);
            if (it == seen.constEnd()) {
                it = seen.insert(texts[i], static_cast<int>(distinct.size()));
                distinct.push_back(texts[i]);
            }
            distinctOf[i] = it.value();
        }
    }
    std::vector<int> order(distinct.size());
    std::vector<int> rankOf(distinct.size());
    {
        const std::vector<QCollatorSortKey> keys = SortKeys(c, distinct);
        std::iota(order.begin(), order.end(), 0);
        std::sort(order.begin(), order.end(), [&](int a, int b) {
            return keys[static_cast<std::size_t>(a)].compare(keys[static_cast<std::size_t>(b)]) < 0;
        });
        int rank = 0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            const auto at = static_cast<std::size_t>(order[i]);
            if (i > 0 && keys[static_cast<std::size_t>(order[i - 1])].compare(keys[at]) != 0)
                ++rank;
            rankOf[at] = rank;
        }
    }
    for (int& d : distinctOf)
        d = rankOf[static_cast<std::size_t>(d)];
    return distinctOf;
}

} // namespace cintal
