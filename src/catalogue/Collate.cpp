#include "catalogue/Collate.h"

#include <QHash>
#include <QLocale>
#include <QSet>
#include <algorithm>
#include <cstring>
#include <numeric>
#include <unicode/ucol.h>

namespace cintal {

QCollator TextCollator() {
    QCollator c(QLocale(QLocale::Spanish, QLocale::Spain));
    c.setCaseSensitivity(Qt::CaseInsensitive);
    c.setNumericMode(true);
    c.setIgnorePunctuation(false);
    return c;
}

namespace {

// The collator of TextCollator, opened once: QCollator hands out its keys one
// object at a time, each in memory of its own, and for a column of 100,000
// names that allocation and the scattered comparisons were most of a sort.
UCollator* Collator() {
    static UCollator* collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        UCollator* c = ucol_open("es_ES", &status);
        // The settings QCollator gives TextCollator's options.
        ucol_setAttribute(c, UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
        ucol_setAttribute(c, UCOL_STRENGTH, UCOL_SECONDARY, &status); // no case
        ucol_setAttribute(c, UCOL_NUMERIC_COLLATION, UCOL_ON, &status);
        ucol_setAttribute(c, UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
        return c;
    }();
    return collator;
}

// Places of texts that are keyed as they stand, equal ones sharing a place.
std::vector<int> RanksOf(const std::vector<QString>& texts) {
    const std::size_t n = texts.size();
    UCollator* collator = Collator();
    // Every key in one buffer; beside each text its first eight key bytes as
    // a number, which settles most comparisons without reaching the buffer.
    std::vector<uint8_t> keys;
    keys.reserve(n * 32);
    std::vector<std::size_t> at(n);
    struct Entry {
        quint64 head;
        quint32 text;
    };
    std::vector<Entry> entries(n);
    std::vector<uint8_t> key(256);
    for (std::size_t i = 0; i < n; ++i) {
        const auto* chars = reinterpret_cast<const UChar*>(texts[i].utf16());
        const auto length = static_cast<int32_t>(texts[i].size());
        int32_t size =
            ucol_getSortKey(collator, chars, length, key.data(), static_cast<int32_t>(key.size()));
        if (size > static_cast<int32_t>(key.size())) {
            key.resize(static_cast<std::size_t>(size));
            size = ucol_getSortKey(collator, chars, length, key.data(), size);
        }
        at[i] = keys.size();
        // The key ends with its zero byte; nothing else in it is zero.
        keys.insert(keys.end(), key.begin(), key.begin() + size);
        quint64 head = 0;
        for (int b = 0; b < 8; ++b)
            head = (head << 8) | (b < size ? key[static_cast<std::size_t>(b)] : 0);
        entries[i] = {head, static_cast<quint32>(i)};
    }
    auto bytes = [&](const Entry& e) {
        return reinterpret_cast<const char*>(keys.data() + at[e.text]);
    };
    auto compare = [&](const Entry& a, const Entry& b) {
        if (a.head != b.head) return a.head < b.head ? -1 : 1;
        return std::strcmp(bytes(a), bytes(b));
    };
    std::sort(entries.begin(), entries.end(),
              [&](const Entry& a, const Entry& b) { return compare(a, b) < 0; });
    std::vector<int> ranks(n);
    int rank = 0;
    for (std::size_t i = 0; i < n; ++i) {
        if (i > 0 && compare(entries[i - 1], entries[i]) != 0) ++rank;
        ranks[entries[i].text] = rank;
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

std::vector<std::size_t> OrderByRanks(const std::vector<int>& ranks, bool descending) {
    // A counting sort: linear, and stable as the order of equal texts must be.
    int top = 0;
    for (int r : ranks)
        top = std::max(top, r);
    std::vector<std::size_t> start(static_cast<std::size_t>(top) + 2, 0);
    auto slot = [&](int r) { return static_cast<std::size_t>(descending ? top - r : r); };
    for (int r : ranks)
        ++start[slot(r) + 1];
    std::partial_sum(start.begin(), start.end(), start.begin());
    std::vector<std::size_t> order(ranks.size());
    for (std::size_t i = 0; i < ranks.size(); ++i)
        order[start[slot(ranks[i])]++] = i;
    return order;
}

} // namespace cintal
