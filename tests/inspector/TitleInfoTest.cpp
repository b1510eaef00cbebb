// The title dialog of a title without a tape: what it shows of the title's
// row and files, and what closing it keeps.

#include "inspector/TitleInfo.h"
#include "WindowFixture.h"

namespace cintal::test {
namespace {

class TitleInfoTest : public WindowTest {
protected:
    void SetUp() override {
        WindowTest::SetUp();
        Path(1, dir.path());
    }
    void Open(const QString& name) {
        SelectTitle(name);
        window = std::make_unique<TitleInfo>(frm.GridTitles, &frm.ImageListFrom);
        window->Form_Load();
    }
    QString Cell(const char* key) const { return TitleCell(key); }

    std::unique_ptr<TitleInfo> window;
};

TEST_F(TitleInfoTest, ShowsTheRecordWithItsOriginAndFiles) {
    Title("Abu Simbel", "2035", 1, "Arcade", 1, 0);
    Sql(db, "UPDATE Titles SET OrigenInfo = 3");
    Sql(db, "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) "
            "VALUES (1, 'abu', 'z80', 1, 1)");
    Open("Abu Simbel");
    EXPECT_EQ(window->windowTitle(), "Título: Abu Simbel");
    EXPECT_EQ(window->ComboPub->currentText(), "Dinamic");
    EXPECT_EQ(window->ComboTipo->currentText(), "Arcade");
    // A year past the list still shows as the box's text.
    EXPECT_EQ(window->ListYear->currentText(), "2035");
    EXPECT_EQ(window->vbalCboEx1->count(), 10);
    EXPECT_EQ(window->vbalCboEx1->currentText(), "Manual");
    EXPECT_EQ(window->vbalCboEx1->itemText(2), "Spectrum Gmaes Database");
    EXPECT_EQ(window->Estado->text(), "Label1");
    ASSERT_EQ(window->GridFiles->Rows(), 1);
    EXPECT_EQ(window->GridFiles->CellText(1, window->GridFiles->ColumnIndex("ColFileName")),
              "abu.z80");
}

TEST_F(TitleInfoTest, ClosingKeepsNamePublisherYearAndOrigin) {
    Title("Abu Simbel", "", 1, "Arcade", 0, 0);
    Open("Abu Simbel");
    EXPECT_EQ(window->ListYear->currentIndex(), 0);
    window->TextName->setText("Abu Simbel Profanation");
    window->ComboPub->setEditText("OCEAN");
    window->ListYear->setEditText("1987");
    window->vbalCboEx1->setCurrentIndex(1);
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(Sql(db, "SELECT Name, IdPub, Year, OrigenInfo, Estado FROM Titles"),
              (std::vector<QVariantList>{{"Abu Simbel Profanation", 2, "1987", 1, 0}}));
    EXPECT_EQ(Cell("ColName"), "Abu Simbel Profanation");
    EXPECT_EQ(Cell("ColPublisher"), "OCEAN");
    EXPECT_EQ(Cell("ColPubId"), "2");
    EXPECT_EQ(Cell("ColYear"), "1987");

    // A year that isn't one keeps the window open; a refused publisher
    // leaves the title without one.
    Open("Abu Simbel Profanation");
    window->ListYear->setEditText("87");
    EXPECT_FALSE(window->Form_Unload());
    EXPECT_EQ(Shown(), Texts{Box("El año debe tener cuatro cifras", "Cintal", Icon::Exclamation)});
    prompt.shown.clear();
    window->ListYear->setEditText("1988");
    window->ComboPub->setEditText("Nadie");
    prompt.Answer(Button::No);
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_EQ(Shown(), Texts{Box("¿Desea agregar la compañía a la base de datos?",
                                 "Compañía desconocida", Icon::Exclamation, Buttons::YesNo)});
    EXPECT_EQ(Sql(db, "SELECT IdPub, Year FROM Titles"), (std::vector<QVariantList>{{0, "1988"}}));
    EXPECT_EQ(Cell("ColPublisher"), "");

    // An empty name saves nothing.
    Open("Abu Simbel Profanation");
    window->TextName->clear();
    window->ListYear->setEditText("1999");
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_EQ(Sql(db, "SELECT Name, Year FROM Titles"),
              (std::vector<QVariantList>{{"Abu Simbel Profanation", "1988"}}));
}

} // namespace
} // namespace cintal::test
