#include "catalogue/Titles.h"

#include "catalogue/Collate.h"
#include "catalogue/Comunes.h"
#include "catalogue/Records.h"
#include "catalogue/Store.h"
#include "tape/Prompt.h"

#include <QHash>
#include <algorithm>
#include <numeric>

namespace cintal {

namespace {

// Years and types repeat over thousands of titles: one shared copy of each
// keeps a large catalogue small in memory.
const QString& Shared(QHash<QString, QString>& pool, const QString& text) {
    auto it = pool.constFind(text);
    if (it == pool.constEnd()) it = pool.insert(text, text);
    return it.value();
}

} // namespace

bool LoadTitles(const QString& clause, std::vector<TitleRow>& rows) {
    rows.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT count(*) FROM Titles")) return false;
    if (q.next()) rows.reserve(static_cast<std::size_t>(std::max<qint64>(0, NumberOf(q.value(0)))));
    q.finish();
    if (!Store::Exec(q, "SELECT TitleId, Name, Year, IdPub, Type, HaveIt, Estado FROM Titles "
                        "ORDER BY TitleId"))
        return false;
    QHash<QString, QString> pool;
    while (q.next()) {
        TitleRow r;
        r.TitleId = NumberOf(q.value(0));
        r.Name = TextOf(q.value(1));
        r.Year = Shared(pool, TextOf(q.value(2)));
        r.IdPub = NumberOf(q.value(3));
        r.Type = Shared(pool, TextOf(q.value(4)));
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
    std::vector<int> ranks;
    {
        std::vector<QString> names;
        names.reserve(rows.size());
        for (const TitleRow& r : rows)
            names.push_back(r.Name);
        ranks = SortRanks(names);
    }
    std::vector<std::size_t> order = OrderByRanks(ranks);
    for (std::size_t i = 0; i < rows.size(); ++i)
        rows[i].NameRank = ranks[i];
    // Rows move into their places cycle by cycle: no second copy of the list.
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (order[i] == i) continue;
        TitleRow held = std::move(rows[i]);
        std::size_t to = i;
        for (;;) {
            const std::size_t from = order[to];
            order[to] = to;
            if (from == i) {
                rows[to] = std::move(held);
                break;
            }
            rows[to] = std::move(rows[from]);
            to = from;
        }
    }
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
    // Shared texts: a grid of many titles holds no copy of its own.
    static const QString texts[] = {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2"),
                                    QStringLiteral("3"), QStringLiteral("4"), QStringLiteral("5"),
                                    QStringLiteral("6")};
    return texts[row.Estado];
}

qint64 ResolvePublisher(QString& text, bool* added) {
    if (added) *added = false;
    if (text.isEmpty()) return 0;
    const qint64 known = Comunes::FindPublisher(text);
    if (known >= 0) return known;
    if (Ask("¿Desea agregar la compañía a la base de datos?", "Compañía desconocida",
            Icon::Exclamation, Buttons::YesNo) != Button::Yes)
        return -1;
    // The store's failure has been shown.
    const qint64 id = Records::AddPublisher(text);
    if (id < 0) return -1;
    Comunes::LoadPublishers();
    text = Comunes::PublisherName(id);
    if (added) *added = true;
    return id;
}

TitleSaved SaveTitleRow(qint64 titleId, const TitleFields& fields) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT TitleId FROM Titles WHERE TitleId = ?", {titleId}))
        return TitleSaved::Failed;
    if (!q.next()) return TitleSaved::NoRow;
    q.finish();
    // Fixed column names; every value is bound.
    QString sql = QStringLiteral("UPDATE Titles SET Name = ?, IdPub = ?");
    QVariantList values{StoredTitleName(fields.name), fields.idPub};
    if (!fields.year.isEmpty()) {
        sql += QStringLiteral(", Year = ?");
        values << fields.year;
        if (fields.estado >= 0) {
            sql += QStringLiteral(", Estado = ?");
            values << fields.estado;
        }
    }
    if (fields.origenInfo >= 0) {
        sql += QStringLiteral(", OrigenInfo = ?");
        values << fields.origenInfo;
    }
    if (fields.type) {
        sql += QStringLiteral(", Type = ?");
        values << LeftChars(*fields.type, 7);
    }
    sql += QStringLiteral(" WHERE TitleId = ?");
    values << titleId;
    return Store::Run(sql, values) ? TitleSaved::Saved : TitleSaved::Failed;
}

int TitleOrigenInfo(qint64 titleId) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT OrigenInfo FROM Titles WHERE TitleId = ?", {titleId}) || !q.next())
        return -1;
    return static_cast<int>(NumberOf(q.value(0)));
}

qint64 TitleIdPub(qint64 titleId) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT IdPub FROM Titles WHERE TitleId = ?", {titleId}) || !q.next())
        return 0;
    return static_cast<qint64>(NumberOf(q.value(0)));
}

} // namespace cintal
