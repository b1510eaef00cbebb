// The title dialog of a title without a tape: what it shows of the title's
// row and files, and what closing it keeps.

#include "inspector/TitleInfo.h"
#include "WindowFixture.h"
#include "inspector/Info.h"

namespace cintal::test {
namespace {

class TitleInfoTest : public WindowTest {
protected:
    void Open(const QString& name) {
        SelectTitle(name);
        window = std::make_unique<TitleInfo>(frm.GridTitles, &frm.ImageListFrom);
        window->Form_Load();
    }
    // Boxes that take the focus from the box the user was in, as real ones do.
    struct FocusLeaves : ScriptedPrompt {
        std::function<void()> onShow;
        Button Show(const Message& m) override {
            if (auto f = std::exchange(onShow, nullptr)) f();
            return ScriptedPrompt::Show(m);
        }
    };
    static Texts Boxes(const ScriptedPrompt& p) {
        Texts out;
        for (const Message& m : p.shown)
            out.push_back(Box(m.text, m.title, m.icon, m.buttons));
        return out;
    }

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

TEST_F(TitleInfoTest, ClosingKeepsNameTypePublisherYearAndOrigin) {
    Title("Abu Simbel", "", 1, "Arcade", 0, 0);
    Open("Abu Simbel");
    EXPECT_EQ(window->ListYear->currentIndex(), 0);
    window->TextName->setText("Abu Simbel Profanation");
    window->ComboPub->setEditText("OCEAN");
    window->ListYear->setEditText("1987");
    window->ComboTipo->setEditText("Deporte");
    window->vbalCboEx1->setCurrentIndex(1);
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(Sql(db, "SELECT Name, IdPub, Year, OrigenInfo, Estado, Type FROM Titles"),
              (std::vector<QVariantList>{{"Abu Simbel Profanation", 2, "1987", 1, 0, "Deporte"}}));
    EXPECT_EQ(TitleCell("ColName"), "Abu Simbel Profanation");
    EXPECT_EQ(TitleCell("ColPublisher"), "OCEAN");
    EXPECT_EQ(TitleCell("ColPubId"), "2");
    EXPECT_EQ(TitleCell("ColYear"), "1987");
    EXPECT_EQ(TitleCell("ColType"), "Deporte");

    // A year is four digits from 1950 on; anything else keeps the window
    // open, with only the one box, though the publisher box was mistyped
    // and the box took its focus.
    const std::string badYear =
        Box("El año debe tener cuatro cifras, de 1950 en adelante", "Cintal", Icon::Exclamation);
    Open("Abu Simbel Profanation");
    window->ComboPub->setEditText("Nadie");
    for (const char* year : {"87", "0000", "1949"}) {
        window->ListYear->setEditText(year);
        FocusLeaves boxes;
        PromptScope scope(boxes);
        boxes.onShow = [&] { emit window->ComboPub->lineEdit()->editingFinished(); };
        EXPECT_FALSE(window->Form_Unload());
        EXPECT_EQ(Boxes(boxes), Texts{badYear}) << year;
    }
    // A refused publisher keeps the one the title has.
    window->ListYear->setEditText("1950");
    prompt.Answer(Button::No);
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_EQ(Shown(), Texts{Box("¿Desea agregar la compañía a la base de datos?",
                                 "Compañía desconocida", Icon::Exclamation, Buttons::YesNo)});
    EXPECT_EQ(window->ComboPub->currentText(), "Ocean");
    EXPECT_EQ(Sql(db, "SELECT IdPub, Year, Type FROM Titles"),
              (std::vector<QVariantList>{{2, "1950", "Deporte"}}));
    EXPECT_EQ(TitleCell("ColPublisher"), "Ocean");
    Open("Abu Simbel Profanation");
    EXPECT_EQ(window->ListYear->currentText(), "1950");

    // An empty name saves nothing.
    window->TextName->clear();
    window->ListYear->setEditText("1999");
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_EQ(Sql(db, "SELECT Name, Year FROM Titles"),
              (std::vector<QVariantList>{{"Abu Simbel Profanation", "1950"}}));
}

// Both catalogue panes, the inspector's and this dialog's, leave a publisher
// they were not asked to change as it is, and know the placeholder.
TEST_F(TitleInfoTest, AnUntouchedPublisherStaysAndThePlaceholderIsNoNewOne) {
    Title("Sin Compañía", "1985", 0, "", 0, 0);
    Title("Huérfano", "1985", 7, "", 0, 0);
    Title("Con Compañía", "1985", 1, "", 0, 0);
    const auto titles = Sql(db, "SELECT Name, IdPub FROM Titles ORDER BY TitleId");
    for (const char* name : {"Sin Compañía", "Huérfano"}) {
        Open(name);
        EXPECT_EQ(window->ComboPub->currentText(),
                  name == QString("Huérfano") ? "" : "- Desconocido -");
        EXPECT_TRUE(window->Form_Unload());
        Info info(frm.GridTitles, frm.GridFiles);
        info.Form_Load();
        EXPECT_TRUE(info.Form_Unload());
    }
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(Sql(db, "SELECT Name, IdPub FROM Titles ORDER BY TitleId"), titles);
    EXPECT_EQ(TitleCell("ColPublisher"), "");

    Open("Con Compañía");
    window->ComboPub->setEditText("- DESCONOCIDO -");
    EXPECT_TRUE(window->Form_Unload());
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(Sql(db, "SELECT IdPub FROM Titles WHERE Name = 'Con Compañía'"),
              (std::vector<QVariantList>{{0}}));
    EXPECT_EQ(Sql(db, "SELECT count(*) FROM Publishers"), (std::vector<QVariantList>{{3}}));
}

} // namespace
} // namespace cintal::test
