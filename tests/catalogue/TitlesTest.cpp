// The title list in the order a user reads it, and the command line's view
// of the catalogue.

#include "catalogue/Titles.h"
#include "../cli/CliRun.h"
#include "CatalogueFixture.h"
#include "catalogue/Collate.h"

#include <QFileInfo>

namespace cintal::test {
namespace {

using TitlesTest = CatalogueTest;

std::vector<std::string> Names(const std::vector<TitleRow>& rows) {
    std::vector<std::string> names;
    for (const TitleRow& r : rows)
        names.push_back(S(r.Name));
    return names;
}

TEST_F(TitlesTest, NameOrderIsSpanishIgnoresCaseAndCountsNumbers) {
    Create();
    for (const char* name :
         {"Zorro", "Juego 10", "abadía", "Ábaco", "JUEGO 2", "Batman", "ábaco", "Éxito"})
        Title(name, "1985", 0, "Arcade", 1, 4);
    ASSERT_TRUE(Store::Open(db, nullptr));

    std::vector<TitleRow> rows;
    ASSERT_TRUE(LoadTitles(kOrderByName, rows));
    // Names equal but for case keep the store's order.
    EXPECT_EQ(Names(rows), (std::vector<std::string>{"Ábaco", "ábaco", "abadía", "Batman", "Éxito",
                                                     "JUEGO 2", "Juego 10", "Zorro"}));
    ASSERT_TRUE(LoadTitles("", rows));
    EXPECT_EQ(Names(rows), (std::vector<std::string>{"Zorro", "Juego 10", "abadía", "Ábaco",
                                                     "JUEGO 2", "Batman", "ábaco", "Éxito"}));
}

// The grids sort whole columns by numbered places; those places must say what
// the collator says of every pair, for names all different and for columns
// of a few repeated values alike.
TEST(SortRanksTest, PlacesAgreeWithTheCollatorOnEveryPair) {
    std::vector<QString> texts;
    for (const QString& t :
         QStringLiteral("| |  Juego|Juego|juego|JUEGO|Juego 2|Juego 10|Juego 010|Ábaco|ábaco|"
                        "Abadía|Año|Ano|Añil|Ñu|Nube|Über|Ubre|Ça va|Éxito|Exito|3D Deathchase|"
                        "1942|1943|007|-+Desconocida+-|- Desconocido -|(C) 1984|¡Olé!|¿Qué?|"
                        "R-Type|R Type|RType|Ω Omega|Дракон|£ 3.99|€|a_b|a.b|a,b|Zorro|zorro")
             .split('|'))
        texts.push_back(t);
    texts.push_back(QString(300, QChar(0x00E9)));
    const QCollator c = TextCollator();
    auto check = [&](const std::vector<QString>& all) {
        const std::vector<int> ranks = SortRanks(all);
        ASSERT_EQ(ranks.size(), all.size());
        for (std::size_t i = 0; i < all.size(); ++i)
            for (std::size_t j = 0; j < all.size(); ++j) {
                const int expected = c.compare(all[i], all[j]);
                const int got = ranks[i] - ranks[j];
                EXPECT_EQ((expected > 0) - (expected < 0), (got > 0) - (got < 0))
                    << S(all[i]) << " | " << S(all[j]);
            }
    };
    check(texts);
    std::vector<QString> repeated;
    for (int round = 0; round < 5; ++round)
        repeated.insert(repeated.end(), texts.rbegin(), texts.rend());
    check(repeated);

    // Stable: equal places keep their order, in either direction.
    const std::vector<int> ranks = {2, 0, 1, 0, 2, 1};
    EXPECT_EQ(OrderByRanks(ranks), (std::vector<std::size_t>{1, 3, 2, 5, 0, 4}));
    EXPECT_EQ(OrderByRanks(ranks, true), (std::vector<std::size_t>{0, 4, 2, 5, 1, 3}));
}

Result RunCli(const std::vector<std::string>& args) {
    const Result r = Cli(args);
    Comunes::Reset();
    return r;
}

using CliTest = CatalogueTest;

TEST_F(CliTest, InitMakesAnEmptyCatalogueOnceAndNeverOverwrites) {
    const std::string path = S(db);
    Result r = RunCli({"init", "--db", path});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "Catálogo creado: " + path + "\n");
    ASSERT_TRUE(Store::Open(db, nullptr));
    EXPECT_EQ(Sql(db, "SELECT COUNT(*) FROM Titles")[0][0].toInt(), 0);
    Store::Close();

    Title("Manic Miner", "1983", 0, "Arcade", 1, 4);
    r = RunCli({"init", "--db", path});
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "No se puede crear el catálogo " + path + ": ya existe el archivo\n");
    EXPECT_EQ(Sql(db, "SELECT Name FROM Titles")[0][0].toString(), "Manic Miner");

    EXPECT_EQ(RunCli({"init", "--db", path, "--force"}).status, 2);
    // Nor any other file of that name.
    QFile::remove(db);
    WriteFile(db, "notas de la colección");
    EXPECT_EQ(RunCli({"init", "--db", path}).status, 1);
    EXPECT_EQ(Contents(db), "notas de la colección");
}

TEST_F(CliTest, TitlesPrintsTheGridRowsInNameOrderOrSaysWhyNot) {
    Result r = RunCli({"titles", "--db", S(db)});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "No se puede abrir el catálogo " + S(db) + ": no existe el archivo\n");
    EXPECT_FALSE(QFileInfo::exists(db));

    Create();
    Publisher(1, "Dinamic");
    Title("Zorro", "1985", 1, "Arcade", 1, 4);
    Title("Juego 10", QVariant(), 1, "Aventur", 0, 7);
    Title("juego 2", "1986", 9, "Arcade", 2, 0);
    Title("Ábaco", "1984", 0, "Puzzle", 0, QVariant());
    r = RunCli({"titles", "--db", S(db)});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, "\tÁbaco\t1984\t\tPuzzle\t0\n"
                     "0\tjuego 2\t1986\t\tArcade\t1\n"
                     "\tJuego 10\t\tDinamic\tAventur\t0\n"
                     "4\tZorro\t1985\tDinamic\tArcade\t1\n");
    EXPECT_EQ(r.err, "");
}

} // namespace
} // namespace cintal::test
