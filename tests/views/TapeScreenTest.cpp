// The main window's screen for a title without a screen file: the one read
// from inside its files, marked as such; a screen file always wins.

#include "../catalogue/CatalogueFixture.h"
#include "../tape/TestSupport.h"
#include "views/Principal.h"

#include <QDir>

namespace cintal::test {
namespace {

class TapeScreenTest : public CatalogueTest, protected Tzx {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
        Path(1, dir.path());
    }
    void AddTitle(const QString& name, const QString& file) {
        Title(name, "1986", 0, "Arcade", 1, 0);
        const qint64 id = Sql(db, "SELECT max(TitleId) FROM Titles")[0][0].toLongLong();
        Sql(db,
            "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt) "
            "VALUES (?, ?, ?, 1, 1)",
            {id, file.section('.', 0, 0), file.section('.', 1)});
    }
    void Select(const QString& name) {
        Grid* g = frm.GridTitles;
        for (int r = 1; r <= g->Rows(); ++r)
            if (g->CellText(r, g->ColumnIndex("ColName")) == name) g->SetSelectedRow(r);
    }
    static QByteArray Bytes(const std::string& b) {
        return QByteArray(b.data(), static_cast<qsizetype>(b.size()));
    }

    ScriptedPrompt prompt;
    PromptScope scope{prompt};
    Principal frm;
};

TEST_F(TapeScreenTest, AScreenInsideATapeShowsWhenNoScreenFileStandsBesideIt) {
    // The first file holds no screen, the second does.
    AddTitle("Juego", "juego.sna");
    AddTitle("Otro", "otro.tzx");
    test::WriteFile(S(dir.filePath("juego.sna")), "corto");
    const std::string screen = Filler(6912);
    test::WriteFile(S(dir.filePath("otro.tzx")),
                    Tape({Pause(5), Std(RomHeader(3, "Pantalla")), Std(RomData(6912))}, 1, 13));
    Sql(db, "UPDATE tFiles SET TitleId = 1");
    ASSERT_TRUE(frm.Form_Load(db));
    Select("Juego");
    EXPECT_EQ(frm.SCRImage1->Image(), ScrImage::Decode(Bytes(screen), false));
    EXPECT_TRUE(frm.LabelScreenSource->isVisibleTo(&frm));
    EXPECT_EQ(S(frm.LabelScreenSource->text()), "(de la cinta)");
    EXPECT_TRUE(frm.OptDatos[0]->isEnabled());

    // A screen file beside a file wins, and the mark goes.
    QDir(dir.path()).mkpath("SCRSHOT");
    const std::string side(6912, '\x55');
    test::WriteFile(S(dir.filePath("SCRSHOT/Juego.scr")), side);
    frm.GridTitles->ClearSelection();
    Select("Juego");
    EXPECT_EQ(frm.SCRImage1->Image(), ScrImage::Decode(Bytes(side), false));
    EXPECT_FALSE(frm.LabelScreenSource->isVisibleTo(&frm));

    // Nothing anywhere: the default screen, unmarked.
    frm.GridTitles->ClearSelection();
    Select("Otro");
    EXPECT_FALSE(frm.LabelScreenSource->isVisibleTo(&frm));
}

} // namespace
} // namespace cintal::test
