// The inspector on a tape that lies inside a zip archive: shown whole, its
// blocks previewed and extracted beside the archive, nothing changed.

#include "WindowFixture.h"
#include "ZipBytes.h"
#include "inspector/Info.h"

#include <QFileInfo>

namespace cintal::test {
namespace {

using ZippedInfoTest = WindowTest;

TEST_F(ZippedInfoTest, OpensReadOnlyWithTheReasonAndStillPreviewsAndExtracts) {
    Title("Juego", "1986", 1, "Arcade", 1, 4);
    const qint64 t = LastId("Titles", "TitleId");
    Sql(db,
        "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt, InnerPath) "
        "VALUES (?, 'Juegos', 'zip', 1, 1, 'cintas/juego.tzx')",
        {t});
    const Bytes tape = Tape({Std(RomHeader(3, "Pantalla")), Std(RomData(6912)),
                             Archive({{0, "Juego"}, {1, "Dinamic"}})});
    const std::string zip = S(Disk("Juegos.zip"));
    ASSERT_TRUE(WriteZip(zip, {{"cintas/juego.tzx", tape}}));
    const Bytes zipped = ReadFile(zip);
    SelectTitle("Juego");
    Info info(frm.GridTitles, frm.GridFiles);
    info.Form_Load();

    EXPECT_EQ(info.TextPath->text(), Disk("Juegos.zip") + "|cintas/juego.tzx");
    EXPECT_EQ(info.GridTZX->Rows(), 3);
    EXPECT_EQ(info.BoxText(Box::Publisher), "Dinamic");
    const QString why = "El archivo está dentro de Juegos.zip: no se puede modificar";
    for (QWidget* w : std::initializer_list<QWidget*>{
             info.CmdTZXSave, info.Command3, info.CommandSube, info.CommandBaja, info.Command2,
             info.Command5, info.Command6, info.Command7}) {
        EXPECT_FALSE(w->isEnabled()) << S(w->objectName());
        EXPECT_EQ(w->toolTip(), why) << S(w->objectName());
    }

    // The screen block shows and goes out beside the archive.
    info.GridTZX->SetSelectedRow(2);
    EXPECT_EQ(info.PreviewStack->currentWidget(), info.ScrPreview);
    QString offered;
    info.ChooseSaveFile = [&](const QString& proposed) { return offered = proposed; };
    info.CommandExtraer_Click();
    EXPECT_EQ(offered, Disk("juego-2.scr"));
    EXPECT_EQ(ReadFile(S(offered)), Filler(6912));

    EXPECT_TRUE(info.Form_Unload());
    EXPECT_EQ(ReadFile(zip), zipped);
    EXPECT_EQ(Shown(),
              Texts{Box("Bloque 2 guardado en " + S(offered), "Extraer", Icon::Information)});
}

} // namespace
} // namespace cintal::test
