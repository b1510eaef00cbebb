// Screenshots of the windows for the README, taken on the demo catalogue:
//   cintal-shots CATÁLOGO CARPETA
// Run it under a real display (xvfb-run -a) so that fonts and styles are
// those a user sees.

#include "inspector/Info.h"
#include "views/Principal.h"

#include <QApplication>
#include <QDir>
#include <QTimer>
#include <cstdio>

using namespace cintal;

namespace {

void Save(QWidget& w, const QString& file) {
    QApplication::processEvents();
    if (!w.grab().save(file)) std::fprintf(stderr, "No se puede escribir %s\n", qPrintable(file));
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
        std::fprintf(stderr, "Uso: cintal-shots CATÁLOGO CARPETA\n");
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(out);
    Principal frm;
    if (!frm.Form_Load(QString::fromLocal8Bit(argv[1]))) return 1;
    frm.resize(1280, 800);
    frm.show();
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
    return 0;
}
