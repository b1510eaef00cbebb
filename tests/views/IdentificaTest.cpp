// "Identificar colección" from the main window: a DAT refused with its
// reason, a DAT added, what the collection has and lacks of it, and the CSV.

#include "MainWindowFixture.h"
#include "catalogue/Titles.h"
#include "maintenance/FrmIdentifica.h"
#include "maintenance/FrmRenombraDat.h"
#include "platform/Hashes.h"

#include <QAction>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

namespace cintal::test {
namespace {

using IdentificaTest = MainWindowTest;

Texts GridRows(Grid* g, bool visibleOnly = false) {
    Texts rows;
    for (int r = 1; r <= g->Rows(); ++r) {
        if (visibleOnly && !g->RowVisible(r)) continue;
        QStringList cells;
        for (int c = 1; c <= g->Columns(); ++c)
            cells << g->CellText(r, c);
        rows.push_back(S(cells.join('|')));
    }
    return rows;
}

TEST_F(IdentificaTest, AddsADatAndShowsWhatIsHadAndWhatIsMissing) {
    Path(1, dir.path());
    const QByteArray bytes("ZXTape!\x1a\x01\x14", 10);
    WriteFile(dir.filePath("uno.tzx"), bytes);
    File(TitleWithId("Uno"), "uno", "tzx");
    const QString sha1 = platform::HashBytes(bytes.constData(), bytes.size()).sha1;
    const QString xml = "<?xml version=\"1.0\"?>\n<datafile>\n<header><name>Spectrum</name>"
                        "<version>2024</version></header>\n"
                        "<game name=\"Uno (1984)(Ocean)\"><rom name=\"Uno.tzx\" sha1=\"" +
                        sha1 +
                        "\"/></game>\n<game name=\"Dos (1985)(Ocean)\"><rom name=\"Dos.tzx\" "
                        "sha1=\"0123456789012345678901234567890123456789\"/></game>\n"
                        "</datafile>\n";
    WriteFile(dir.filePath("roto.dat"), xml.left(90).toUtf8());
    WriteFile(dir.filePath("bueno.dat"), xml.toUtf8());
    Load();

    frm.RunModal = [&](QDialog& window) {
        auto& w = static_cast<FrmIdentifica&>(window);
        w.ChooseDat = [&] { return dir.filePath("roto.dat"); };
        w.CmdAdd->click();
        EXPECT_EQ(Shown(),
                  Texts{Box("El archivo DAT " + S(dir.filePath("roto.dat")) +
                                " no es válido: línea 3: el archivo termina antes de tiempo. "
                                "No se ha cargado nada.",
                            "Identificar colección", Icon::Exclamation)});
        EXPECT_EQ(w.GridDats->Rows(), 0);

        // A store that fails halfway keeps nothing of the DAT, and says why.
        Forget();
        Sql(db, "CREATE TRIGGER lleno BEFORE INSERT ON DatRoms "
                "BEGIN SELECT RAISE(ABORT, 'disco lleno'); END");
        w.ChooseDat = [&] { return dir.filePath("bueno.dat"); };
        w.CmdAdd->click();
        EXPECT_EQ(Shown(), Texts{Box("Error en el catálogo: disco lleno", {}, Icon::Critical)});
        EXPECT_EQ(w.GridDats->Rows(), 0);
        EXPECT_EQ(Rows("SELECT count(*) FROM Dats"), Texts{"0"});
        Sql(db, "DROP TRIGGER lleno");

        w.CmdAdd->click();
        EXPECT_EQ(GridRows(w.GridDats), Texts{"Spectrum|2024|2"});
        EXPECT_EQ(GridRows(w.GridGames),
                  (Texts{"Tengo|Uno (1984)(Ocean)|" + S(dir.filePath("uno.tzx")),
                         "Falta|Dos (1985)(Ocean)|"}));
        EXPECT_EQ(S(w.LabelResumen->text()), "Tengo 1 de 2 (50,0 %)");
        w.OptFalta->click();
        EXPECT_EQ(GridRows(w.GridGames, true), Texts{"Falta|Dos (1985)(Ocean)|"});

        w.ChooseSaveFile = [&](const QString& proposed) { return dir.filePath(proposed); };
        w.CmdExportar->click();
    };
    frm.findChild<QAction*>("CmdIdentifica")->trigger();
    QFile csv(dir.filePath("Spectrum.csv"));
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    EXPECT_EQ(S(QString::fromUtf8(csv.readAll())), "Estado;Juego;Ruta\r\nTengo;Uno (1984)(Ocean);" +
                                                       S(dir.filePath("uno.tzx")) +
                                                       "\r\nFalta;Dos (1985)(Ocean);\r\n");
}

Texts Lines(const QListWidget* list) {
    Texts lines;
    for (int i = 0; i < list->count(); ++i)
        lines.push_back(S(list->item(i)->text()));
    return lines;
}

// What the main window shows of identification, and the names a DAT gives
// planned, confirmed and carried out from "Identificar colección".
TEST_F(IdentificaTest, TheFilesShowTheirGamesAndTheDatsNamesAreGivenAfterThePlan) {
    Path(1, dir.path());
    const QByteArray uno("ZXTape!\x1a\x01\x14"
                         "uno",
                         13),
        dos("ZXTape!\x1a\x01\x14"
            "dos",
            13);
    WriteFile(dir.filePath("uno.tzx"), uno);
    WriteFile(dir.filePath("dos.tzx"), dos);
    WriteFile(dir.filePath("tres.tzx"), "otra cinta");
    // Dos's name from the DAT is taken, in another case, by another file.
    WriteFile(dir.filePath("dos (1985)(ocean).tzx"), "no es dos");
    File(TitleWithId("Uno"), "uno", "tzx");
    File(TitleWithId("Dos"), "dos", "tzx");
    File(TitleWithId("Tres"), "tres", "tzx");
    TitleWithId("Sin archivos", 0, 0);
    const auto rom = [](const char* game, const QByteArray& bytes) {
        return QStringLiteral("<game name=\"%1\"><rom name=\"%1.tzx\" sha1=\"%2\"/></game>")
            .arg(QLatin1String(game), platform::HashBytes(bytes.constData(), bytes.size()).sha1);
    };
    WriteFile(dir.filePath("zx.dat"),
              ("<datafile><header><name>ZX</name></header>" + rom("Uno (1984)(Ocean)", uno) +
               rom("Dos (1985)(Ocean)", dos) + "</datafile>")
                  .toUtf8());
    Load();
    Select("Uno");
    const auto datCell = [&] {
        Grid* g = frm.GridFiles;
        return S(g->CellText(1, g->ColumnIndex("ColDat")));
    };
    EXPECT_EQ(datCell(), "desconocido");
    EXPECT_EQ(frm.GridFiles->CellForeColor(1, frm.GridFiles->ColumnIndex("ColDat")),
              Grids::ColourUnknownFore);

    Texts plan, afterRun;
    std::string planned, renamed, left;
    frm.RunModal = [&](QDialog& window) {
        if (auto* tidy = qobject_cast<FrmRenombraDat*>(&window)) {
            plan = Lines(tidy->ListPlan);
            planned = S(tidy->LabelPlaneados->text());
            prompt.Answer(Button::No);
            tidy->CommandRenombrar->click();
            EXPECT_TRUE(QFileInfo::exists(dir.filePath("uno.tzx"))) << "No renames nothing";
            prompt.Answer(Button::Yes);
            tidy->CommandRenombrar->click();
            afterRun = Lines(tidy->ListPlan);
            renamed = S(tidy->LabelRenombrados->text());
            left = S(tidy->LabelDejados->text());
            EXPECT_FALSE(tidy->CommandRenombrar->isEnabled()) << "the plan is spent";
            return;
        }
        auto& w = static_cast<FrmIdentifica&>(window);
        w.ChooseDat = [&] { return dir.filePath("zx.dat"); };
        w.CmdAdd->click();
        EXPECT_TRUE(w.Progress->isHidden()) << "the bar goes when the run ends";
        w.CmdRenombrar->click();
        EXPECT_EQ(GridRows(w.GridGames),
                  (Texts{"Tengo|Uno (1984)(Ocean)|" + S(dir.filePath("Uno (1984)(Ocean).tzx")),
                         "Tengo|Dos (1985)(Ocean)|" + S(dir.filePath("dos.tzx"))}))
            << "the paths follow the new names";
    };
    // The titles' menu opens the window as the toolbar does.
    QAction* entry = nullptr;
    for (QAction* a : frm.Menupop->actions())
        if (a->text() == "Identificar colección...") entry = a;
    ASSERT_NE(entry, nullptr);
    entry->trigger();

    const std::string at = S(dir.path()) + "/";
    EXPECT_EQ(plan, (Texts{"renombrar " + at + "uno.tzx -> " + at + "Uno (1984)(Ocean).tzx",
                           "ya existe: se deja " + at + "Dos (1985)(Ocean).tzx"}));
    EXPECT_EQ(planned, "1");
    EXPECT_EQ(afterRun, (Texts{"renombrado " + at + "uno.tzx -> " + at + "Uno (1984)(Ocean).tzx",
                               "ya existe: se deja " + at + "Dos (1985)(Ocean).tzx"}));
    EXPECT_EQ(renamed, "1");
    EXPECT_EQ(left, "1");
    EXPECT_EQ(Shown(), (Texts{Box("Se va a renombrar 1 archivo con el nombre que le da la DAT. "
                                  "¿Desea continuar?",
                                  "Renombrar según la DAT", Icon::Question, Buttons::YesNo),
                              Box("Se va a renombrar 1 archivo con el nombre que le da la DAT. "
                                  "¿Desea continuar?",
                                  "Renombrar según la DAT", Icon::Question, Buttons::YesNo)}));
    EXPECT_EQ(ReadFile(S(dir.filePath("Uno (1984)(Ocean).tzx"))), uno.toStdString());
    EXPECT_EQ(ReadFile(S(dir.filePath("dos (1985)(ocean).tzx"))), "no es dos");

    // Closed, the main window shows the file by its new name and its game.
    Grid* files = frm.GridFiles;
    EXPECT_EQ(S(files->CellText(1, files->ColumnIndex("ColFileName"))), "Uno (1984)(Ocean).tzx");
    EXPECT_EQ(datCell(), "Uno (1984)(Ocean)");

    // Only the titles with a file that no DAT knows.
    frm.ChckSinIdentificar->click();
    Texts shown;
    for (int r = 1; r <= frm.GridTitles->Rows(); ++r)
        if (frm.GridTitles->RowVisible(r))
            shown.push_back(S(frm.GridTitles->CellText(r, frm.GridTitles->ColumnIndex("ColName"))));
    EXPECT_EQ(shown, Texts{"Tres"});
    Grids::FillTitles(frm.Parts(), kOrderByName);
    EXPECT_EQ(frm.windowTitle().endsWith("4 programas hallados / 1 mostrados."), true)
        << S(frm.windowTitle());
    frm.ChckSinIdentificar->click();
    EXPECT_TRUE(frm.GridTitles->RowVisible(1));
}

} // namespace
} // namespace cintal::test
