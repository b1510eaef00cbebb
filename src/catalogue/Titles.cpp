#include "catalogue/Titles.h"

#include "catalogue/Collate.h"
#include "catalogue/Store.h"

#include <algorithm>
#include <numeric>

namespace cintal {

bool LoadTitles(const QString& clause, std::vector<TitleRow>& rows) {
    rows.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT TitleId, Name, Year, IdPub, Type, HaveIt, Estado FROM Titles "
                        "ORDER BY TitleId"))
        return false;
    while (q.next()) {
        TitleRow r;
        r.TitleId = NumberOf(q.value(0));
        r.Name = TextOf(q.value(1));
        r.Year = TextOf(q.value(2));
        r.IdPub = NumberOf(q.value(3));
        r.Type = TextOf(q.value(4));
        r.HaveIt = YesOf(q.value(5));
        r.HasEstado = !q.value(6).isNull();
        r.Estado = NumberOf(q.value(6));
        rows.push_back(std::move(r));
    }
    if (clause.trimmed().compare(kOrderByName.trimmed(), Qt::CaseInsensitive) == 0)
        SortTitlesByName(rows);
    return true;
}

void SortTitlesByName(std::vector<TitleRow>& rows) {
    QCollator c = TextCollator();
    std::vector<QString> names;
    names.reserve(rows.size());
    for (const TitleRow& r : rows)
        names.push_back(r.Name);
    std::vector<QCollatorSortKey> keys = SortKeys(c, names);
    std::vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return keys[a].compare(keys[b]) < 0; });
    std::vector<TitleRow> sorted;
    sorted.reserve(rows.size());
    for (std::size_t i : order)
        sorted.push_back(std::move(rows[i]));
    rows = std::move(sorted);
}

QString StoredTitleName(const QString& name) {
    QString n = LeftChars(name, 50);
    n.replace(QLatin1Char('"'), QLatin1Char('\''));
    return n;
}

QString LeftChars(const QString& text, int count) {
    qsizetype at = 0;
    for (int n = 0; n < count && at < text.size(); ++n)
        at += text.at(at).isHighSurrogate() && at + 1 < text.size() &&
                      text.at(at + 1).isLowSurrogate()
                  ? 2
                  : 1;
    return text.left(at);
}

QString EstadoText(const TitleRow& row) {
    if (!row.HasEstado || row.Estado < 0 || row.Estado > 6) return {};
    return QString::number(row.Estado);
}

} // namespace cintal
