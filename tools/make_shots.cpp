// Screenshots of the windows for the README, taken on the demo catalogue:
//   cintal-shots CATÁLOGO CARPETA [LISTADOS]
// With the demo listing pages, also "Importa listado WOS" after a run over
// them into a new catalogue. Run it under a real display (xvfb-run -a) so
// that fonts and styles are those a user sees.

#include "acquisition/FrmWosIn.h"
#include "catalogue/Comunes.h"
#include "catalogue/Settings.h"
#include "catalogue/Store.h"
#include "inspector/Info.h"
#include "maintenance/FrmIdentifica.h"
#include "maintenance/FrmRenombraDat.h"
#include "maintenance/Ordena.h"
#include "maintenance/frmRenombra.h"
#include "tape/Prompt.h"
#include "views/Principal.h"
#include "widgets/Grids.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QPainter>
#include <QRadioButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

using namespace cintal;

namespace {

void Save(QWidget& w, const QString& file) {
    QApplication::processEvents();
    if (!w.grab().save(file)) std::fprintf(stderr, "No se puede escribir %s\n", qPrintable(file));
}

// Lets the window settle: the folder tree reads its levels in the background.
void Settle(int ms) {
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms)
        QApplication::processEvents(QEventLoop::AllEvents, 50);
}

// The window with a popup menu open over it at a point of one of its grids:
// a popup is a window of its own, so it is painted onto the window's picture.
void SaveWithMenu(QWidget& w, QMenu* menu, QWidget* over, const QPoint& at, const QString& file) {
    QApplication::processEvents();
    QPixmap picture = w.grab();
    menu->popup(over->mapToGlobal(at));
    QApplication::processEvents();
    QPainter painter(&picture);
    painter.drawPixmap(w.mapFromGlobal(menu->pos()), menu->grab());
    painter.end();
    menu->close();
    if (!picture.save(file)) std::fprintf(stderr, "No se puede escribir %s\n", qPrintable(file));
}

bool SelectTitle(Principal& frm, const QString& name) {
    Grid* g = frm.GridTitles;
    for (int r = 1; r <= g->Rows(); ++r)
        if (g->CellText(r, g->ColumnIndex("ColName")) == name) {
            g->SetSelectedRow(r);
            return true;
        }
    std::fprintf(stderr, "No está el título %s\n", qPrintable(name));
    return false;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "Uso: cintal-shots CATÁLOGO CARPETA [LISTADOS]\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(out);
    // The windows save what they show when they close, and the settings
    // remember folders: both go to scratch copies, never to the demo's own.
    QTemporaryDir work;
    UseSettingsFile(work.filePath("ajustes.ini"));
    const QString copy = work.filePath("cintal.mdb");
    if (!QFile::copy(QString::fromLocal8Bit(argv[1]), copy)) {
        std::fprintf(stderr, "No se puede copiar el catálogo %s\n", argv[1]);
        return 1;
    }
    // Questions get the answer a user who only closes them would give.
    ScriptedPrompt quiet;
    PromptScope scope(quiet);
    Principal frm;
    if (!frm.Form_Load(copy)) return 1;
    frm.resize(1280, 800);
    frm.show();
    // The main window on the first title with a screen file and an inlay,
    // then its inlay, then the menus of both grids.
    for (int r = 1; r <= frm.GridTitles->Rows(); ++r) {
        frm.GridTitles->SetSelectedRow(r);
        if (frm.LabelScreenSource->isVisibleTo(&frm) || !frm.OptDatos[1]->isEnabled()) continue;
        Save(frm, QDir(out).filePath("principal-pantalla.png"));
        frm.OptDatos[1]->click();
        Save(frm, QDir(out).filePath("principal-encarte.png"));
        frm.OptDatos[0]->click();
        Grid* titles = frm.GridTitles;
        const QRect row = titles->visualRect(titles->model()->index(r - 1, 1));
        SaveWithMenu(frm, frm.Menupop, titles->viewport(), row.center(),
                     QDir(out).filePath("menu-titulos.png"));
        frm.GridFiles->SetSelectedRow(1);
        const QRect file = frm.GridFiles->visualRect(frm.GridFiles->model()->index(0, 1));
        SaveWithMenu(frm, frm.Menupop2, frm.GridFiles->viewport(), file.center(),
                     QDir(out).filePath("menu-archivos.png"));
        break;
    }
    // The main window on the first title whose screen comes from inside a tape.
    for (int r = 1; r <= frm.GridTitles->Rows(); ++r) {
        frm.GridTitles->SetSelectedRow(r);
        if (frm.LabelScreenSource->isVisibleTo(&frm)) {
            Save(frm, QDir(out).filePath("principal-cinta.png"));
            break;
        }
    }
    // The inspector on a tape with archive information and many blocks.
    if (SelectTitle(frm, QStringLiteral("Castillo Sombrío"))) {
        frm.RunModal = [&](QDialog& window) {
            window.show();
            Save(window, QDir(out).filePath("inspector.png"));
            // The preview of the loading screen, then of the BASIC loader.
            auto& info = static_cast<Info&>(window);
            info.GridTZX->SetSelectedRow(5);
            Save(window, QDir(out).filePath("inspector-pantalla.png"));
            info.GridTZX->SetSelectedRow(3);
            Save(window, QDir(out).filePath("inspector-basic.png"));
            window.close();
        };
        frm.CmdModify_Click();
    }
    // The inspector on a tape of the block kinds that TZX 1.20 brought.
    if (SelectTitle(frm, QStringLiteral("Mansión Misteriosa"))) {
        frm.RunModal = [&](QDialog& window) {
            window.show();
            static_cast<Info&>(window).GridTZX->SetSelectedRow(5); // a screen in such a block
            Save(window, QDir(out).filePath("inspector-tzx120.png"));
            window.close();
        };
        frm.CmdModify_Click();
    }
    // The compare window on a title with two tapes that differ.
    if (SelectTitle(frm, QStringLiteral("Ranas Saltarinas"))) {
        frm.RunModal = [&](QDialog& window) {
            window.show();
            Save(window, QDir(out).filePath("comparar.png"));
            window.close();
        };
        frm.Command2_Click();
    }
    // The title dialog on a title whose files hold no tape.
    if (SelectTitle(frm, QStringLiteral("Cavernas Abisales"))) {
        frm.RunModal = [&](QDialog& window) {
            window.show();
            Save(window, QDir(out).filePath("titulo.png"));
            window.close();
        };
        frm.CmdModify_Click();
    }
    // The options, with two emulators installed, the default one and a
    // format of its own, in settings of their own.
    {
        QTemporaryDir opts;
        UseSettingsFile(opts.filePath("ajustes.ini"));
        auto program = [&](const QString& name) {
            const QString path = opts.filePath(name);
            QFile f(path);
            if (f.open(QIODevice::WriteOnly)) f.write("#!/bin/sh\n");
            f.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            return path;
        };
        SaveSetting("Emulador", "SpectaculatorPath", program("Spectaculator"));
        SaveSetting("Emulador", "SpinPath", program("ZXSpin"));
        SaveSetting("Emulador", "DefaultEmul", "Spectaculator");
        SaveSetting("Emulador", "Fmt2", "Spin");
        frm.RunModal = [&](QDialog& window) {
            window.show();
            Save(window, QDir(out).filePath("opciones.png"));
            window.close();
        };
        frm.Command7_Click();
        UseSettingsFile(work.filePath("ajustes.ini"));
    }
    // The reorganiser after a dry run by initial into an empty folder: the
    // plan only, nothing moves.
    {
        QTemporaryDir empty;
        frm.RunModal = [&](QDialog& window) {
            auto& ordena = static_cast<Ordena&>(window);
            ordena.show();
            ordena.Dir1_Click(empty.path());
            ordena.OptionSortBy[1]->setChecked(true);
            ordena.CommandSimular_Click();
            Settle(800);
            Save(window, QDir(out).filePath("ordena.png"));
            window.close();
        };
        frm.Command3_Click();
    }
    // The rename window on a file with its loading screen; closed unused.
    if (SelectTitle(frm, QStringLiteral("Castillo Sombrío"))) {
        frm.GridFiles->SetSelectedRow(1);
        frm.RunModal = [&](QDialog& window) {
            window.show();
            Settle(300);
            Save(window, QDir(out).filePath("renombra.png"));
            window.close();
        };
        frm.mnuRenombra_Click();
    }
    // A zipped tape: the main window with its screen, the inspector on it,
    // then the groups of files with the same bytes.
    if (SelectTitle(frm, QStringLiteral("Caverna Helada"))) {
        Save(frm, QDir(out).filePath("principal-zip.png"));
        frm.RunModal = [&](QDialog& window) {
            window.show();
            auto& info = static_cast<Info&>(window);
            for (int r = 1; r <= info.GridFiles->Rows(); ++r)
                if (!Grids::FileAt(*info.GridFiles, r).Inner.isEmpty())
                    info.GridFiles->SetSelectedRow(r);
            Save(window, QDir(out).filePath("inspector-zip.png"));
            window.close();
        };
        frm.CmdModify_Click();
        frm.RunModal = [&](QDialog& window) {
            window.show();
            Save(window, QDir(out).filePath("repetidos.png"));
            window.close();
        };
        frm.CmdRepetidos_Click();
    }
    // Identification: the demo's DAT with what the collection has of it, the
    // names it would give (planned only: the demo's files stay as they are),
    // then the main window with each file's game and only the titles with a
    // file no DAT knows.
    frm.RunModal = [&](QDialog& window) {
        window.show();
        if (qobject_cast<FrmRenombraDat*>(&window)) {
            Save(window, QDir(out).filePath("renombrar-dat.png"));
        } else {
            Save(window, QDir(out).filePath("identificar.png"));
            static_cast<FrmIdentifica&>(window).CmdRenombrar_Click();
        }
        window.close();
    };
    frm.CmdIdentifica_Click();
    frm.ChckSinIdentificar->setChecked(true);
    if (SelectTitle(frm, QStringLiteral("Castillo Sombrío"))) {
        QScrollBar* across = frm.GridFiles->horizontalScrollBar();
        across->setValue(across->maximum());
        Save(frm, QDir(out).filePath("principal-dat.png"));
        across->setValue(0);
    }
    if (argc < 4) return 0;
    // The listing import after its first run, into a new catalogue.
    QTemporaryDir scratch;
    UseSettingsFile(scratch.filePath("ajustes.ini"));
    const QString db = scratch.filePath("cintal.mdb");
    QString reason;
    if (!Store::CreateEmpty(db, &reason) || !Comunes::InitGlobals(db, &reason)) {
        std::fprintf(stderr, "No se puede crear %s: %s\n", qPrintable(db), qPrintable(reason));
        return 1;
    }
    FrmWosIn wos(&frm);
    wos.show();
    wos.Dir1_Click(QDir(QString::fromLocal8Bit(argv[3])).absolutePath());
    wos.CommandSelecciona_Click();
    Settle(1500);
    Save(wos, QDir(out).filePath("importa-listado.png"));
    return 0;
}
