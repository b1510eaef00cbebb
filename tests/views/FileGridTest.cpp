// A title selected in the main window: its files as the file grid shows them,
// its pictures and screen found beside them or inside them, and what a double
// click opens.

#include "MainWindowFixture.h"
#include "ZipBytes.h"
#include "catalogue/Files.h"
#include "catalogue/Titles.h"

#include <QCoreApplication>
#include <QDir>
#include <QImage>
#include <QLocale>

namespace cintal::test {
namespace {

class FileGridTest : public MainWindowTest {
protected:
    void SetUp() override {
        MainWindowTest::SetUp();
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        one = Folder("uno");
        two = Folder("dos");
        Path(1, one);
        Path(3, two);
    }
    void TearDown() override {
        QLocale::setDefault(QLocale::c());
        MainWindowTest::TearDown();
    }

    QString Folder(const QString& name) {
        QDir(dir.path()).mkpath(name);
        return dir.filePath(name);
    }
    // A picture file: width and height decide how it is fitted.
    void Picture(const QString& path, int w, int h) {
        QDir().mkpath(QFileInfo(path).path());
        QImage img(w, h, QImage::Format_RGB32);
        img.fill(Qt::darkCyan);
        ASSERT_TRUE(img.save(path, "JPG")) << S(path);
    }
    // A file row's cell as "text/icon key/alignment".
    std::string Cell(int row, const char* key) const {
        Grid* g = frm.GridFiles;
        const int col = g->ColumnIndex(key);
        return S(g->CellText(row, col) + "/" + frm.FormatIcon.Key(g->CellIcon(row, col)) + "/" +
                 QString::number(g->CellAlignment(row, col)));
    }
    // Enabled, bold and selected, as "EBS" with "-" for what is not.
    std::string Option(int i) const {
        const QRadioButton* o = frm.OptDatos[static_cast<std::size_t>(i)];
        return std::string(o->isEnabled() ? "E" : "-") + (o->font().bold() ? "B" : "-") +
               (o->isChecked() ? "S" : "-");
    }
    QString DefaultScreen() const {
        return QDir(QCoreApplication::applicationDirPath()).filePath("z80.scr");
    }

    QString one, two;
};

TEST_F(FileGridTest, FilesShowDecodedCellsInTheFirstFilesColours) {
    const qint64 t = TitleWithId("Juego");
    // HaveIt, Memory, Players, FileSize, Origin, IdLang, LoadSchema, AYSound
    File(t, "juego", "Tzx", 1, {0, 48, 2, 123456, "Hacked Version", "spa", "Speedlock", 1});
    File(t, "juego", "z80", 9, {1, 16, QVariant(), 0, " ", "xx", QVariant(), 0});
    File(t, "otro", "ROM", 3, {1, 128, 1, 7, "Type-In", QVariant(), QVariant(), QVariant()});
    Load();
    Select("Juego");
    Grid* g = frm.GridFiles;
    ASSERT_EQ(g->Rows(), 3);

    EXPECT_EQ(Cell(1, "ColIcono"), "/TZX/-1");
    EXPECT_EQ(Cell(1, "ColFileName"), "juego.Tzx//-1");
    EXPECT_EQ(Cell(1, "ColExtension"), "Tzx//-1");
    EXPECT_EQ(Cell(1, "ColMemory"), "/M48/-1");
    EXPECT_EQ(Cell(1, "ColPlayers"), "2/2JUG/1");
    EXPECT_EQ(Cell(1, "ColOrigin"), "Hacked Version/OH/-1");
    EXPECT_EQ(Cell(1, "ColLanguage"), "SPA/SPA/1");
    EXPECT_EQ(Cell(1, "ColLoadSchema"), "Speedlock//-1");
    EXPECT_EQ(Cell(1, "ColSize"), "123.456  //2");
    EXPECT_EQ(Cell(1, "ColPath"), S(one) + "//0");
    EXPECT_EQ(Cell(1, "ColPathIndex"), "1//0");
    EXPECT_EQ(Cell(1, "ColAYSound"), "SÍ//-1");
    EXPECT_EQ(Cell(1, "ColMultiLoad"), "NO//-1");
    EXPECT_EQ(Cell(1, "ColTitleId"), std::to_string(t) + "//0");

    // Unset and unknown values: an empty origin of one blank, a language
    // without a flag, a memory that is neither 48 nor 128, a path index
    // outside the register.
    EXPECT_EQ(Cell(2, "ColIcono"), "/Z80/-1");
    EXPECT_EQ(Cell(2, "ColOrigin"), "-Desconocido-/OU/-1");
    EXPECT_EQ(Cell(2, "ColLanguage"), "xx/UNK/1");
    EXPECT_EQ(Cell(2, "ColMemory"), "/ANY/-1");
    EXPECT_EQ(Cell(2, "ColPlayers"), "/1JUG/1");
    EXPECT_EQ(Cell(2, "ColPath"), "//0");
    EXPECT_EQ(Cell(2, "ColSize"), "0  //2");
    EXPECT_EQ(Cell(3, "ColIcono"), "//-1"); // no picture for that format
    EXPECT_EQ(Cell(3, "ColMemory"), "/M128/-1");
    EXPECT_EQ(Cell(3, "ColOrigin"), "Type-In/OT/-1");
    EXPECT_EQ(Cell(3, "ColLanguage"), "/UNK/1");

    // The first file has no copy on disk: every row is grey.
    for (int r = 1; r <= 3; ++r) {
        EXPECT_EQ(g->CellBackColor(r, g->ColumnIndex("ColFileName")), QColor(0xE0, 0xE0, 0xE0));
        EXPECT_EQ(g->CellForeColor(r, g->ColumnIndex("ColPath")), QColor(0x66, 0x99, 0xCC));
    }
    EXPECT_TRUE(frm.CmdModify->isEnabled());
    EXPECT_EQ(S(frm.LabelNombre->text()), "Juego");
    EXPECT_EQ(S(frm.ComboRegistro->currentText()), "Juego");
}

TEST_F(FileGridTest, OriginsDecodeByTheirFirstSixLetters) {
    const std::vector<std::pair<QString, std::string>> cases = {
        {"Perfecto", "SÍ|Perfecto"},         {"Original Release", "OO|Original Release"},
        {"COMPILATION", "OC|COMPILATION"},   {"Corrupt", "OB|Corrupt"},
        {"Re-Release", "OR|Re-Release"},     {"Magazine Cover Tape", "OM|Magazine Cover Tape"},
        {"Incomplete", "OI|Incomplete"},     {"Buggered / Corrupt", "OU|Buggered / Corrupt"},
        {"Demo version", "OU|Demo version"}, {"", "OU|-Desconocido-"},
        {" Original", "OU| Original"},
    };
    for (const auto& [origin, expected] : cases) {
        const OriginMark m = DecodeOrigin(origin);
        EXPECT_EQ(S(m.icon + "|" + m.text), expected) << S(origin);
    }
    EXPECT_EQ(S(SideBaseName("Mi Juego: Parte 2?")), "Mi Juego - Parte 2");
}

TEST_F(FileGridTest, PicturesAreFoundBesideAnyFileIgnoringCase) {
    const qint64 a = TitleWithId("Mi Juego: Parte 2?");
    File(a, "mijuego", "tzx", 1);
    File(a, "mijuego", "tap", 3);
    QDir(two).mkpath("SCRSHOT");
    WriteFile(QDir(two).filePath("SCRSHOT/mi juego - parte 2.SCR"), QByteArray(6912, '\0'));
    Picture(QDir(one).filePath("inlay/Mi Juego - Parte 2.jpg"), 400, 100);   // wide
    Picture(QDir(two).filePath("Map/Mi Juego - Parte 2_Map.jpg"), 100, 300); // tall
    const qint64 b = TitleWithId("Sin Nada");
    File(b, "nada", "tzx", 1);
    const qint64 c = TitleWithId("Roto");
    File(c, "roto", "tzx", 1);
    WriteFile(QDir(one).filePath("inlay/Roto.jpg"), "no es una imagen");
    TitleWithId("Sin Archivos", 0, 0);
    Load();

    EXPECT_EQ(frm.ScreenFile(), DefaultScreen());
    EXPECT_EQ(Option(0) + Option(1) + Option(2) + Option(3), "E-S---------");

    // The screen misses beside the first file and hits beside the second.
    Select("Mi Juego: Parte 2?");
    EXPECT_EQ(frm.ScreenFile(), QDir(two).filePath("SCRSHOT/mi juego - parte 2.SCR"));
    EXPECT_EQ(Option(0) + Option(1) + Option(2) + Option(3), "EBSEB-EB----");
    EXPECT_FALSE(frm.ImgCaratula->HasPicture()); // the inlay waits for its click

    frm.OptDatos[1]->click();
    EXPECT_TRUE(frm.SCRImage1->isHidden());
    EXPECT_EQ(frm.ImgCaratula->Tag, QDir(one).filePath("inlay/Mi Juego - Parte 2.jpg"));
    EXPECT_EQ(frm.ImgCaratula->DrawnRect(), QRect(0, 960, 3840, 960)); // full width, centred
    frm.OptDatos[2]->click();
    EXPECT_EQ(frm.ImgCaratula->DrawnRect(), QRect(1440, 0, 960, 2880)); // full height, centred

    // A title without a map: the option greys but stays selected, the area empties.
    Select("Sin Nada");
    EXPECT_EQ(Option(0) + Option(1) + Option(2) + Option(3), "--------S---");
    EXPECT_FALSE(frm.ImgCaratula->HasPicture());
    EXPECT_TRUE(frm.ImgCaratula->Tag.isEmpty());
    EXPECT_EQ(frm.ScreenFile(), DefaultScreen());

    // An inlay that is there but is no picture: enabled and bold, nothing drawn.
    frm.OptDatos[1]->setChecked(true);
    Select("Roto");
    EXPECT_EQ(Option(1), "EBS");
    EXPECT_FALSE(frm.ImgCaratula->HasPicture());

    // No file rows: the default screen, and the options as they were.
    Select("Sin Archivos");
    EXPECT_EQ(frm.GridFiles->Rows(), 0);
    EXPECT_EQ(frm.ScreenFile(), DefaultScreen());
    EXPECT_EQ(Option(1), "EBS");
}

// Whatever takes the selection away (a refill, the filter hiding the row)
// takes the title's files, data and picture with it: nothing is left on screen
// that a command could act on as if it belonged to no title.
TEST_F(FileGridTest, WithoutASelectedTitleNothingOfTheLastOneStays) {
    Publisher(1, "Ocean");
    const qint64 t = TitleWithId("Juego");
    Sql(db, "UPDATE Titles SET IdPub = 1");
    File(t, "juego", "tzx", 1);
    File(t, "juego", "z80", 1);
    QDir(one).mkpath("scrshot");
    WriteFile(QDir(one).filePath("scrshot/Juego.scr"), QByteArray(6912, '\x38'));
    Picture(QDir(one).filePath("Inlay/Juego.jpg"), 300, 200);
    // Not in the collection, yet with a file row: the filter hides it.
    const qint64 lost = TitleWithId("Perdido", 0, 0);
    File(lost, "perdido", "tzx", 1, {0});
    Load();
    auto nothingShown = [&](const char* when) {
        SCOPED_TRACE(when);
        EXPECT_EQ(frm.GridTitles->SelectedRow(), 0);
        EXPECT_EQ(frm.GridFiles->Rows(), 0);
        EXPECT_EQ(frm.GridFiles->model()->rowCount(), 0);
        for (QLabel* l : {frm.LabelNombre, frm.LabelCompany, frm.LabelYear, frm.LabelType})
            EXPECT_EQ(S(l->text()), "") << S(l->objectName());
        EXPECT_EQ(S(frm.ComboRegistro->currentText()), "");
        EXPECT_EQ(S(frm.ScreenFile()), S(DefaultScreen()));
        EXPECT_FALSE(frm.ImgCaratula->HasPicture());
        EXPECT_TRUE(frm.ImgCaratula->Tag.isEmpty());
        // The picture options go grey; "Pantalla" stays at hand to go back to.
        EXPECT_EQ(Option(0).substr(0, 2) + Option(1).substr(0, 2), "E---");
    };

    Select("Juego");
    frm.OptDatos[1]->click();
    ASSERT_EQ(frm.GridFiles->Rows(), 2);
    ASSERT_TRUE(frm.ImgCaratula->HasPicture());
    ASSERT_EQ(S(frm.LabelCompany->text()), "Ocean");

    Grids::FillTitles(frm.Parts(), kOrderByName);
    nothingShown("after a refill");
    EXPECT_EQ(Option(1), "--S") << "the chosen option stays chosen";
    // With no file row left there is nothing to delete, so no file can be
    // deleted for title 0 and leave its own title marked as held.
    frm.GridFiles->SetSelectedRow(1);
    frm.mnuDelFile_Click();
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_EQ(Sql(db, "SELECT count(*) FROM tFiles")[0][0].toInt(), 3);

    Select("Perdido");
    ASSERT_EQ(frm.GridFiles->Rows(), 1);
    frm.ChckHaveIt->click();
    nothingShown("after the filter hid the title");

    // A title selected again brings it all back.
    Select("Juego");
    EXPECT_EQ(frm.GridFiles->Rows(), 2);
    EXPECT_EQ(S(frm.LabelNombre->text()), "Juego");
    EXPECT_EQ(frm.ScreenFile(), QDir(one).filePath("scrshot/Juego.scr"));
    EXPECT_TRUE(frm.ImgCaratula->HasPicture());
    EXPECT_EQ(Option(1), "EBS");
}

TEST_F(FileGridTest, DoubleClicksOpenTheFileAndThePicture) {
    const qint64 t = TitleWithId("Juego");
    File(t, "juego", "tzx", 1);
    File(t, "perdido", "tzx", 7);
    WriteFile(QDir(one).filePath("JUEGO.TZX"), "ZXTape!");
    Picture(QDir(one).filePath("Inlay/Juego.jpg"), 200, 150);
    Load();
    Select("Juego");

    frm.GridFiles_DblClick(); // no file selected
    frm.GridFiles->SetSelectedRow(2);
    frm.GridFiles_DblClick(); // its folder is unknown
    frm.GridFiles->SetSelectedRow(1);
    frm.GridFiles_DblClick();
    // The catalogue says "tzx"; the disk says "TZX".
    EXPECT_EQ(shell.calls, QStringList{QDir(one).filePath("JUEGO.TZX")});

    EXPECT_EQ(S(frm.ImgCaratula->toolTip()), "Doble click par abrir el archivo");
    frm.ImgCaratula_DblClick(); // nothing shown yet
    EXPECT_EQ(S(frm.ImgCaratula->toolTip()), "");
    frm.OptDatos[1]->click();
    frm.ImgCaratula_DblClick();
    EXPECT_EQ(S(frm.ImgCaratula->toolTip()), "Doble click para abrir el archivo");
    EXPECT_EQ(shell.calls.last(), QDir(one).filePath("Inlay/Juego.jpg"));
}

TEST_F(FileGridTest, AScreenInsideATapeShowsWhenNoScreenFileStandsBesideIt) {
    // The first file holds no screen, the second does.
    const qint64 t = TitleWithId("Juego");
    File(t, "juego", "sna", 1);
    File(t, "otro", "tzx", 1);
    TitleWithId("Otro");
    test::WriteFile(S(QDir(one).filePath("juego.sna")), "corto");
    test::WriteFile(S(QDir(one).filePath("otro.tzx")),
                    Tape({Pause(5), Std(RomHeader(3, "Pantalla")), Std(RomData(6912))}, 1, 13));
    Load();
    Select("Juego");
    const auto decoded = [](const std::string& b) {
        return ScrImage::Decode(QByteArray(b.data(), static_cast<qsizetype>(b.size())), false);
    };
    EXPECT_EQ(frm.SCRImage1->Image(), decoded(Filler(6912)));
    EXPECT_TRUE(frm.LabelScreenSource->isVisibleTo(&frm));
    EXPECT_EQ(S(frm.LabelScreenSource->text()), "(de la cinta)");
    EXPECT_TRUE(frm.OptDatos[0]->isEnabled());

    // A screen file beside a file wins, and the mark goes.
    const std::string side(6912, '\x55');
    QDir(one).mkpath("SCRSHOT");
    test::WriteFile(S(QDir(one).filePath("SCRSHOT/Juego.scr")), side);
    frm.GridTitles->ClearSelection();
    Select("Juego");
    EXPECT_EQ(frm.SCRImage1->Image(), decoded(side));
    EXPECT_FALSE(frm.LabelScreenSource->isVisibleTo(&frm));

    // Nothing anywhere: the default screen, unmarked.
    Select("Otro");
    EXPECT_EQ(frm.ScreenFile(), DefaultScreen());
    EXPECT_FALSE(frm.LabelScreenSource->isVisibleTo(&frm));
}

TEST_F(FileGridTest, AZippedTapeShowsItsArchiveItsScreenAndOpensFromACopy) {
    const qint64 t = TitleWithId("Juego");
    File(t, "Juegos", "zip", 1);
    Sql(db, "UPDATE tFiles SET InnerPath = 'cintas/juego.tzx', Crc32 = '0a1b2c3d'");
    const std::string tape =
        Tape({Pause(5), Std(RomHeader(3, "Pantalla")), Std(RomData(6912))}, 1, 13);
    ASSERT_TRUE(WriteZip(S(QDir(one).filePath("Juegos.zip")), {{"cintas/juego.tzx", tape}}));
    Load();
    Select("Juego");

    EXPECT_EQ(Cell(1, "ColFileName"), "Juegos.zip › cintas/juego.tzx//-1");
    EXPECT_EQ(Cell(1, "ColIcono"), "/TZX/-1");
    EXPECT_EQ(Cell(1, "ColCrc32"), "0a1b2c3d//-1");
    EXPECT_TRUE(frm.LabelScreenSource->isVisibleTo(&frm)) << "the screen comes from the tape";

    frm.GridFiles->SetSelectedRow(1);
    frm.GridFiles_DblClick();
    frm.GridFiles_DblClick();
    ASSERT_EQ(shell.calls.size(), 2);
    for (const QString& opened : shell.calls) {
        EXPECT_TRUE(opened.startsWith(QDir::tempPath())) << S(opened);
        EXPECT_TRUE(opened.endsWith("/cintas/juego.tzx")) << S(opened);
        EXPECT_EQ(ReadFile(S(opened)), tape);
    }
    EXPECT_NE(shell.calls[0], shell.calls[1]) << "a copy of its own each time";
    EXPECT_TRUE(QFileInfo::exists(QDir(one).filePath("Juegos.zip")));
}

} // namespace
} // namespace cintal::test
