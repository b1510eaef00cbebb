#include "catalogue/Collate.h"

#include <QCollatorSortKey>
#include <QHash>
#include <QLocale>
#include <QSet>
#include <algorithm>
#include <cstring>
#include <numeric>

namespace cintal {

QCollator TextCollator() {
    QCollator c(QLocale(QLocale::Spanish, QLocale::Spain));
    c.setCaseSensitivity(Qt::CaseInsensitive);
    c.setNumericMode(true);
    c.setIgnorePunctuation(false);
    return c;
}

namespace {

// Places of texts in the order of TextCollator, equal ones sharing a place.
// Each text is keyed once, and the sort compares keys, which is far cheaper
// than comparing the texts again and again.
std::vector<int> RanksOf(const std::vector<QString>& texts) {
    const std::size_t n = texts.size();
    const QCollator collator = TextCollator();
    std::vector<QCollatorSortKey> keys;
    keys.reserve(n);
    for (const QString& t : texts)
        keys.push_back(collator.sortKey(t));
    std::vector<quint32> order(n);
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(),
              [&](quint32 a, quint32 b) { return keys[a].compare(keys[b]) < 0; });
    std::vector<int> ranks(n);
    int rank = 0;
    for (std::size_t i = 0; i < n; ++i) {
        if (i > 0 && keys[order[i - 1]].compare(keys[order[i]]) != 0) ++rank;
        ranks[order[i]] = rank;
    }
    return ranks;
}

// Whether the texts repeat a good deal, judged on the first thousand.
bool FewValues(const std::vector<QString>& texts) {
    const std::size_t sample = std::min<std::size_t>(texts.size(), 1000);
    QSet<QString> seen;
    for (std::size_t i = 0; i < sample; ++i)
        seen.insert(texts[i]);
    return static_cast<std::size_t>(seen.size()) * 2 < sample;
}

} // namespace

std::vector<int> SortRanks(const std::vector<QString>& texts) {
    // Names are nearly all different: keying each costs less than finding
    // the repeats first.
    if (!FewValues(texts)) return RanksOf(texts);
    std::vector<int> distinctOf(texts.size());
    std::vector<QString> distinct;
    {
        QHash<QString, int> seen;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            auto it = seen.constFind(texts[i]);
            if (it == seen.constEnd()) {
                it = seen.insert(texts[i], static_cast<int>(distinct.size()));
                distinct.push_back(texts[i]);
            }
            distinctOf[i] = it.value();
        }
    }
    const std::vector<int> rankOf = RanksOf(distinct);
    for (int& d : distinctOf)
        d = rankOf[static_cast<std::size_t>(d)];
    return distinctOf;
}

} // namespace cintal
