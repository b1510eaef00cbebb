// The main window driven offscreen: start-up on a catalogue made here, the
// title grid as the user sees it, the filter box and the header clicks.

#include "views/Principal.h"
#include "../catalogue/CatalogueFixture.h"
#include "catalogue/Titles.h"
#include "tape/Prompt.h"

#include <QApplication>
#include <QFileInfo>
#include <QHeaderView>

namespace cintal::test {
namespace {

using Texts = std::vector<std::string>;

class PrincipalTest : public CatalogueTest {
protected:
    // Five titles whose names, years and publishers give ties and gaps: an
    // accent, numbers inside names, an IdPub beyond the register, an Estado
    // without an icon, and two titles without files.
    void Collection(bool load = true) {
        Create();
        Publisher(1, "Dinamic");
        Publisher(2, "Ocean");
        Title("Zorro", "1985", 2, "Arcade", 1, 4);
        Title("Juego 10", "1986", 1, "Arcade", 0, 7);
        Title("Abadía", "1987", 1, "Aventur", 1, 0);
        Title("juego 2", "1985", 9, "Arcade", 0, 1);
        Title("Ábaco", "1984", 0, "Puzzle", 1, 6);
        if (load) {
            ASSERT_TRUE(frm.Form_Load(db));
        }
    }

    int Col(const char* key) const { return frm.GridTitles->ColumnIndex(key); }
    QString Cell(int row, const char* key) const { return frm.GridTitles->CellText(row, Col(key)); }

    // Every row, hidden or not, as "Fuente|Nombre|Año|Empresa|Tipo|Id|PubId|HaveIt".
    Texts Rows() const {
        Texts rows;
        for (int r = 1; r <= frm.GridTitles->Rows(); ++r) {
            QStringList cells;
            for (const char* key : {"ColEstado", "ColName", "ColYear", "ColPublisher", "ColType",
                                    "ColTitleId", "ColPubId", "ColHaveIt"})
                cells << Cell(r, key);
            rows.push_back(S(cells.join('|')));
        }
        return rows;
    }
    // A column's texts, every row, hidden or not.
    Texts Column(const char* key) const {
        Texts texts;
        for (int r = 1; r <= frm.GridTitles->Rows(); ++r)
            texts.push_back(S(Cell(r, key)));
        return texts;
    }
    // The names the user sees, top to bottom.
    Texts ShownNames() const {
        const QAbstractItemModel* m = frm.GridTitles->model();
        Texts names;
        for (int r = 0; r < m->rowCount(); ++r)
            names.push_back(S(m->index(r, Col("ColName") - 1).data().toString()));
        return names;
    }
    void ClickHeader(const char* key) {
        emit frm.GridTitles->horizontalHeader()->sectionClicked(Col(key) - 1);
    }
    // The headings of the columns on screen, left to right.
    Texts Headers() const {
        const QAbstractItemModel* m = frm.GridTitles->model();
        Texts headers;
        for (int c = 0; c < m->columnCount(); ++c)
            if (!frm.GridTitles->isColumnHidden(c))
                headers.push_back(S(m->headerData(c, Qt::Horizontal).toString()));
        return headers;
    }
    std::string Caption() const { return S(frm.windowTitle()); }

    ScriptedPrompt prompt;
    PromptScope scope{prompt};
    Principal frm;
};

const Texts kHeaders = {"Fuente", "Nombre", "Año", "Empresa", "Tipo"};

std::string Found(int found, int shown) {
    return "Cintal 1.0.404 beta  - " + std::to_string(found) + " programas hallados / " +
           std::to_string(shown) + " mostrados.";
}

// A box that stops the run; the reason is the driver's own unless given.
void ExpectCannotOpen(const Message& m, const QString& path, const std::string& reason = {}) {
    const std::string head = "No se puede abrir el catálogo " + S(path) + ": ";
    EXPECT_EQ(m.text.substr(0, head.size()), head);
    EXPECT_GT(m.text.size(), head.size()) << "the reason is missing";
    if (!reason.empty()) {
        EXPECT_EQ(m.text, head + reason);
    }
    EXPECT_EQ(m.title, "");
    EXPECT_EQ(m.icon, Icon::Critical);
    EXPECT_EQ(m.buttons, Buttons::Ok);
}

TEST_F(PrincipalTest, WithoutACatalogueYesMakesAnEmptyOne) {
    prompt.Answer(Button::Yes);
    ASSERT_TRUE(frm.Form_Load(db));
    ASSERT_EQ(prompt.shown.size(), 1u);
    const Message& m = prompt.shown[0];
    EXPECT_EQ(m.text, "No se encuentra el catálogo " + S(db) + ". ¿Desea crear un catálogo vacío?");
    EXPECT_EQ(m.title, "");
    EXPECT_EQ(m.icon, Icon::Question);
    EXPECT_EQ(m.buttons, Buttons::YesNo);

    EXPECT_EQ(Caption(), "Cintal - 0 programas hallados");
    EXPECT_EQ(frm.GridTitles->Rows(), 0);
    EXPECT_EQ(frm.ComboRegistro->count(), 0);
    EXPECT_EQ(Headers(), kHeaders) << "an empty grid still shows its columns";
    Comunes::Reset();
    EXPECT_TRUE(Store::Open(db, nullptr));
}

TEST_F(PrincipalTest, WithoutACatalogueNoEndsTheRunAndMakesNothing) {
    prompt.Answer(Button::No);
    EXPECT_FALSE(frm.Form_Load(db));
    EXPECT_EQ(prompt.shown.size(), 1u);
    EXPECT_FALSE(QFileInfo::exists(db));

    // Sí where no file can be made (its folder is a file) ends the run too,
    // saying why.
    WriteFile(dir.filePath("archivo"), "x");
    const QString nowhere = dir.filePath("archivo/cintal.mdb");
    prompt.Answer(Button::Yes);
    Principal again;
    EXPECT_FALSE(again.Form_Load(nowhere));
    ASSERT_EQ(prompt.shown.size(), 3u);
    ExpectCannotOpen(prompt.shown[2], nowhere);
}

TEST_F(PrincipalTest, AnUnreadableCatalogueEndsTheRunAndIsLeftAlone) {
    WriteFile(db, "esto no es un catálogo, aunque lo parezca por el nombre");
    QByteArray before = Contents(db);
    EXPECT_FALSE(frm.Form_Load(db));
    ASSERT_EQ(prompt.shown.size(), 1u);
    ExpectCannotOpen(prompt.shown[0], db, "el archivo no es un catálogo");
    EXPECT_EQ(Contents(db), before);

    QFile::remove(db);
    Create();
    Sql(db, "DROP TABLE Paths");
    before = Contents(db);
    Principal again;
    EXPECT_FALSE(again.Form_Load(db));
    ASSERT_EQ(prompt.shown.size(), 2u);
    ExpectCannotOpen(prompt.shown[1], db, "falta la tabla Paths");
    EXPECT_EQ(Contents(db), before);
}

TEST_F(PrincipalTest, TitlesFillInNameOrderWithTheirSourceIconsAndColours) {
    Collection();
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(Caption(), Found(5, 5));
    EXPECT_EQ(Headers(), kHeaders);

    // Slot 0 and an IdPub past the register both show no publisher.
    EXPECT_EQ(Rows(), (Texts{"6|Ábaco|1984||Puzzle|5||1", "0|Abadía|1987|Dinamic|Aventur|3||1",
                             "1|juego 2|1985||Arcade|4||0", "|Juego 10|1986|Dinamic|Arcade|2||0",
                             "4|Zorro|1985|Ocean|Arcade|1||1"}));
    // The source shows as the picture of its Estado; 7 has none.
    auto picture = [&](int row) {
        const QModelIndex i = frm.GridTitles->model()->index(row - 1, Col("ColEstado") - 1);
        return qvariant_cast<QIcon>(i.data(Qt::DecorationRole));
    };
    EXPECT_EQ(frm.GridTitles->CellIcon(1, Col("ColEstado")), 6);
    EXPECT_FALSE(picture(1).isNull());
    EXPECT_EQ(frm.GridTitles->CellIcon(4, Col("ColEstado")), -1);
    EXPECT_TRUE(picture(4).isNull());

    const QColor base = QApplication::palette().color(QPalette::Base);
    const QColor text = QApplication::palette().color(QPalette::Text);
    for (int row = 1; row <= 5; ++row) {
        const bool missing = Cell(row, "ColHaveIt") == "0";
        for (const char* key : {"ColName", "ColYear", "ColPublisher", "ColType", "ColTitleId"}) {
            SCOPED_TRACE(std::string(key) + " row " + std::to_string(row));
            EXPECT_EQ(frm.GridTitles->CellBackColor(row, Col(key)),
                      missing ? QColor("#E0E0E0") : base);
            EXPECT_EQ(frm.GridTitles->CellForeColor(row, Col(key)),
                      missing ? QColor("#6699CC") : text);
        }
    }
    // Other windows rewrite cells with the pair of the last row written.
    EXPECT_EQ(Grids::CellBack, base);
    EXPECT_EQ(Grids::CellFore, text);

    QStringList combo;
    for (int i = 0; i < frm.ComboRegistro->count(); ++i)
        combo << frm.ComboRegistro->itemText(i);
    EXPECT_EQ(combo, QStringList({"Ábaco", "Abadía", "juego 2", "Juego 10", "Zorro"}));
    EXPECT_EQ(frm.GridTitles->SelectedRow(), 0);

    // Without a clause the rows come as the store keeps them, and nothing of
    // the row that stood there before stays behind.
    frm.GridTitles->CellDetails(1, Col("ColPubId"), "2");
    Grids::FillTitles(frm.Parts(), "");
    EXPECT_EQ(Rows(), (Texts{"4|Zorro|1985|Ocean|Arcade|1||1", "|Juego 10|1986|Dinamic|Arcade|2||0",
                             "0|Abadía|1987|Dinamic|Aventur|3||1", "1|juego 2|1985||Arcade|4||0",
                             "6|Ábaco|1984||Puzzle|5||1"}));
    EXPECT_EQ(frm.GridTitles->CellIcon(2, Col("ColEstado")), -1);

    // An emptied store clears the grid but leaves the list of names.
    Sql(db, "DELETE FROM Titles");
    Grids::FillTitles(frm.Parts(), kOrderByName);
    EXPECT_EQ(Caption(), "Cintal - 0 programas hallados");
    EXPECT_EQ(frm.GridTitles->Rows(), 0);
    EXPECT_TRUE(ShownNames().empty());
    EXPECT_EQ(frm.ComboRegistro->count(), 5);
}

// Both grids on a shown window: every heading whole, the source as its number
// beside its picture, and nothing on screen after the file's folder.
TEST_F(PrincipalTest, GridsShowWholeHeadingsAndTheSourceNumberBesideItsPicture) {
    Collection(false);
    Path(1, dir.path());
    Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) "
            "VALUES (1, 'zorro', 'tzx', 1, 1)");
    ASSERT_TRUE(frm.Form_Load(db));
    frm.resize(2400, 800); // wider than all the file grid's columns
    frm.show();
    QApplication::processEvents();

    const QModelIndex source = frm.GridTitles->model()->index(0, Col("ColEstado") - 1);
    EXPECT_EQ(S(source.data().toString()), "6");
    EXPECT_FALSE(qvariant_cast<QIcon>(source.data(Qt::DecorationRole)).isNull());
    EXPECT_EQ(source.data(Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignHorizontal_Mask,
              Qt::AlignRight);

    auto cut = [](const Grid* g) {
        Texts cut;
        for (int c = 0; c < g->model()->columnCount(); ++c)
            if (!g->isColumnHidden(c) &&
                g->columnWidth(c) < g->horizontalHeader()->sectionSizeHint(c))
                cut.push_back(S(g->ColumnHeader(c + 1)) + " " + std::to_string(g->columnWidth(c)) +
                              " < " + std::to_string(g->horizontalHeader()->sectionSizeHint(c)));
        return cut;
    };
    EXPECT_EQ(cut(frm.GridTitles), Texts{});
    // The arrow of a sorted column takes no letters away either.
    ClickHeader("ColEstado");
    ClickHeader("ColYear");
    QApplication::processEvents();
    EXPECT_EQ(cut(frm.GridTitles), Texts{});

    for (int r = 1; r <= frm.GridTitles->Rows(); ++r)
        if (Cell(r, "ColName") == "Zorro") frm.GridTitles->SetSelectedRow(r);
    Grid* files = frm.GridFiles;
    ASSERT_EQ(files->Rows(), 1);
    QApplication::processEvents();
    EXPECT_EQ(cut(files), Texts{});
    Texts seen;
    for (int c = 0; c < files->model()->columnCount(); ++c)
        if (!files->isColumnHidden(c) && files->columnWidth(c) > 0)
            seen.push_back(S(files->ColumnHeader(c + 1)));
    EXPECT_EQ(seen, (Texts{"Fmt.", "Archivo", "Mem", "Origen", "Carga", "Idioma", "Tamaño", "Ruta",
                           "CRC32", "DAT"}));
    const int last = files->ColumnIndex("ColDat") - 1;
    EXPECT_EQ(files->columnViewportPosition(last) + files->columnWidth(last),
              files->viewport()->width())
        << "the last column reaches the end of the row";
}

TEST_F(PrincipalTest, TheBoxHidesTitlesWithoutFilesAtOnceAndRemembersIt) {
    Collection();
    EXPECT_FALSE(frm.ChckHaveIt->isChecked());

    frm.ChckHaveIt->click();
    EXPECT_EQ(ShownNames(), (Texts{"Ábaco", "Abadía", "Zorro"}));
    EXPECT_FALSE(frm.GridTitles->RowVisible(3));
    EXPECT_EQ(Caption(), Found(5, 5)) << "the filter doesn't rewrite the caption";
    EXPECT_EQ(S(GetSetting("Conf", "HaveIt")), "1");

    Grids::FillTitles(frm.Parts(), kOrderByName);
    EXPECT_EQ(Caption(), Found(5, 3));
    EXPECT_EQ(ShownNames().size(), 3u);

    frm.ChckHaveIt->click();
    EXPECT_EQ(ShownNames().size(), 5u);
    EXPECT_EQ(Caption(), Found(5, 3));
    EXPECT_EQ(S(GetSetting("Conf", "HaveIt")), "0");

    // The next run starts as the box was left.
    frm.ChckHaveIt->click();
    Comunes::Reset();
    Principal next;
    ASSERT_TRUE(next.Form_Load(db));
    EXPECT_TRUE(next.ChckHaveIt->isChecked());
    EXPECT_EQ(S(next.windowTitle()), Found(5, 3));
    EXPECT_EQ(next.GridTitles->model()->rowCount(), 3);
}

TEST_F(PrincipalTest, HeaderClicksSortAndReverseWithTiesInNameOrder) {
    Collection();
    frm.ChckHaveIt->click();
    const Texts byName = Column("ColName");

    ClickHeader("ColYear");
    EXPECT_EQ(S(frm.GridTitles->ColumnTag(Col("ColYear"))), "DESC");
    EXPECT_EQ(Column("ColName"), (Texts{"Ábaco", "juego 2", "Zorro", "Juego 10", "Abadía"}));
    ClickHeader("ColYear");
    EXPECT_EQ(S(frm.GridTitles->ColumnTag(Col("ColYear"))), "");
    EXPECT_EQ(Column("ColName"), (Texts{"Abadía", "Juego 10", "juego 2", "Zorro", "Ábaco"}));
    // Every cell, and whether the row is shown, travels with its title.
    EXPECT_EQ(Column("ColTitleId"), (Texts{"3", "2", "4", "1", "5"}));
    EXPECT_EQ(frm.GridTitles->CellBackColor(2, Col("ColName")), QColor("#E0E0E0"));
    EXPECT_EQ(ShownNames(), (Texts{"Abadía", "Zorro", "Ábaco"}));

    // Each column keeps its own tag: another column starts ascending.
    ClickHeader("ColYear");
    ClickHeader("ColPublisher");
    EXPECT_EQ(S(frm.GridTitles->ColumnTag(Col("ColYear"))), "DESC");
    EXPECT_EQ(S(frm.GridTitles->ColumnTag(Col("ColPublisher"))), "DESC");
    EXPECT_EQ(Column("ColName"), (Texts{"Ábaco", "juego 2", "Abadía", "Juego 10", "Zorro"}));

    // A click on the name gives the start-up order, and the next its reverse.
    ClickHeader("ColName");
    EXPECT_EQ(Column("ColName"), byName);
    ClickHeader("ColName");
    EXPECT_EQ(Column("ColName"), Texts(byName.rbegin(), byName.rend()));

    EXPECT_EQ(frm.ComboRegistro->itemText(0), "Ábaco") << "sorting leaves the list alone";
    EXPECT_EQ(Caption(), Found(5, 5));

    // A name or a publisher rewritten in its cell, as other windows do, and a
    // row taken out: the next clicks sort what the cells now say.
    const int zorro = 1; // the reversed name order puts it first
    ASSERT_EQ(S(Cell(zorro, "ColName")), "Zorro");
    frm.GridTitles->CellDetails(zorro, Col("ColName"), "Aardvark");
    frm.GridTitles->CellDetails(zorro, Col("ColPublisher"), "Alfa");
    frm.GridTitles->RemoveRow(2); // "Juego 10"
    ClickHeader("ColName");
    EXPECT_EQ(Column("ColName"), (Texts{"Aardvark", "Ábaco", "Abadía", "juego 2"}));
    ClickHeader("ColPublisher"); // its second click: descending
    EXPECT_EQ(Column("ColName"), (Texts{"Abadía", "Aardvark", "Ábaco", "juego 2"}));
}

} // namespace
} // namespace cintal::test
