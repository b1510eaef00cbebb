// "Identificar colección" from the main window: a DAT refused with its
// reason, a DAT added, what the collection has and lacks of it, and the CSV.

#include "MainWindowFixture.h"
#include "maintenance/FrmIdentifica.h"
#include "platform/Hashes.h"

#include <QAction>
#include <QFile>
#include <QLabel>
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

        w.ChooseDat = [&] { return dir.filePath("bueno.dat"); };
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

} // namespace
} // namespace cintal::test
