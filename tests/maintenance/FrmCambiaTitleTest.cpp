// The window that moves a title's files, reached from the title grid's menu
// and driven as a user would: pick the other title, answer the questions,
// then look at the grids and the store.

#include "maintenance/FrmCambiaTitle.h"
#include "../catalogue/CatalogueFixture.h"
#include "TapeBytes.h"
#include "tape/Prompt.h"
#include "tape/TZXTape.h"
#include "views/Principal.h"

namespace cintal::test {
namespace {

class FrmCambiaTitleTest : public CatalogueTest {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
        Publisher(0, "- Desconocido -");
        Publisher(1, "Ocean");
        Path(1, dir.path());
        Title("Viejo", "1984", 0, "", 1, 0);
        Title("Nuevo", "1987", 1, "", 1, 0);
        Title("Vacio", "1990", 0, "", 0, 0);
        for (const char* name : {"uno", "dos"}) {
            Sql(db,
                "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex) VALUES (1, ?, 'tzx', "
                "1)",
                {QString(name)});
            WriteFile(dir.filePath(QString(name) + ".tzx"),
                      QByteArray::fromStdString(raw::TzxHeader(1, 13) +
                                                raw::Archive({{0, "Viejo"}}) +
                                                raw::Standard(raw::RomData("abc"))));
        }
        ASSERT_TRUE(frm.Form_Load(db));
    }
    void Select(Grid* g, const QString& name) {
        for (int r = 1; r <= g->Rows(); ++r)
            if (g->CellText(r, g->ColumnIndex("ColName")) == name) return g->SetSelectedRow(r);
        FAIL() << "no row " << S(name);
    }
    std::vector<std::string> Texts() const {
        std::vector<std::string> out;
        for (const Message& m : prompt.shown)
            out.push_back(m.text);
        return out;
    }
    // Opens the window from the menu and double-clicks target in it.
    void MoveTo(const QString& target) {
        frm.RunModal = [&](QDialog& d) {
            auto& w = static_cast<FrmCambiaTitle&>(d);
            EXPECT_EQ(S(w.windowTitle()), "Form2");
            // It opens on the main window's row number, in name order.
            EXPECT_EQ(w.GridTitles->SelectedRow(), frm.GridTitles->SelectedRow());
            Select(w.GridTitles, target);
            w.GridTitles_DblClick();
        };
        frm.mnuCambiaTitle->trigger();
    }

    ScriptedPrompt prompt;
    PromptScope scope{prompt};
    Principal frm;
};

TEST_F(FrmCambiaTitleTest, BothFilesMoveInOneDoubleClickAndYesDeletesTheOldTitle) {
    // The menu entry follows the title's files.
    Select(frm.GridTitles, "Vacio");
    EXPECT_FALSE(frm.mnuCambiaTitle->isEnabled());
    Select(frm.GridTitles, "Viejo");
    EXPECT_TRUE(frm.mnuCambiaTitle->isEnabled());
    EXPECT_EQ(S(frm.mnuCambiaTitle->text()), "Mover archivos a otro título...");
    ASSERT_EQ(frm.GridFiles->Rows(), 2);
    prompt.Answer(Button::Ok);
    prompt.Answer(Button::Yes);
    MoveTo("Nuevo");
    EXPECT_EQ(Texts(), (std::vector<std::string>{"2 archivos movidos",
                                                 "¿Desea eliminar la entrada \"1 - Viejo\"?",
                                                 "Registro eliminado"}));
    EXPECT_EQ(Sql(db, "SELECT count(*) FROM tFiles WHERE TitleId = 2")[0][0].toInt(), 2);
    EXPECT_TRUE(Sql(db, "SELECT * FROM Titles WHERE TitleId = 1").empty());
    EXPECT_EQ(frm.GridFiles->Rows(), 0);
    TZXTape t;
    t.FileName = S(dir.filePath("dos.tzx"));
    t.ReadTape();
    EXPECT_EQ(t.ArchiveInfo().iName, "Nuevo");
    EXPECT_EQ(t.ArchiveInfo().iPublisher, "Ocean");
    EXPECT_EQ(t.ArchiveInfo().iYear, "1987");
}

TEST_F(FrmCambiaTitleTest, NoKeepsTheOldTitleWithoutFilesAndItselfIsRefused) {
    Select(frm.GridTitles, "Viejo");
    MoveTo("Viejo");
    EXPECT_EQ(Texts(), (std::vector<std::string>{"Elija otro título"}));
    EXPECT_EQ(Sql(db, "SELECT count(*) FROM tFiles WHERE TitleId = 1")[0][0].toInt(), 2);

    prompt.shown.clear();
    prompt.Answer(Button::Ok);
    prompt.Answer(Button::No);
    MoveTo("Nuevo");
    EXPECT_EQ(Texts(), (std::vector<std::string>{"2 archivos movidos",
                                                 "¿Desea eliminar la entrada \"1 - Viejo\"?"}));
    EXPECT_EQ(Sql(db, "SELECT Name FROM Titles WHERE TitleId = 1")[0][0].toString(), "Viejo");
    EXPECT_EQ(Sql(db, "SELECT count(*) FROM tFiles WHERE TitleId = 1")[0][0].toInt(), 0);
    EXPECT_EQ(frm.GridFiles->Rows(), 0);
}

} // namespace
} // namespace cintal::test
