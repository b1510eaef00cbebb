#pragma once
// What the tests of the main window share: an empty catalogue, titles and
// file rows put in it, the window on it, rows picked as a click would, and
// what is handed to the desktop.

#include "../catalogue/CatalogueFixture.h"
#include "../tape/TestSupport.h"
#include "platform/Shell.h"
#include "views/Principal.h"

namespace cintal::test {

using Texts = std::vector<std::string>;

class MainWindowTest : public CatalogueTest, protected Tzx, protected ScriptedBoxes {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Shell::Set(&shell);
        Create();
    }
    void TearDown() override {
        Shell::Set(nullptr);
        CatalogueTest::TearDown();
    }

    qint64 TitleWithId(const QString& name, qint64 idPub = 0, int haveIt = 1,
                       const QString& year = "1986") {
        Title(name, year, idPub, "Arcade", haveIt, 4);
        return LastId("Titles", "TitleId");
    }
    // HaveIt, Memory, Players, FileSize, Origin, IdLang, LoadSchema and
    // AYSound from more, in that order; HaveIt 1 unless given.
    void File(qint64 title, const QString& name, const QString& ext, qint64 path = 1,
              const QVariantList& more = {}) {
        QVariantList v{title, name, ext, path};
        v << (more.value(0).isValid() ? more.value(0) : QVariant(1));
        for (int i = 1; i < 8; ++i)
            v << more.value(i);
        Sql(db,
            "INSERT INTO tFiles (TitleId, FileName, Extension, PathIndex, HaveIt, Memory, Players, "
            "FileSize, Origin, IdLang, LoadSchema, AYSound) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, "
            "?, ?)",
            v);
    }
    void Load() { ASSERT_TRUE(frm.Form_Load(db)); }
    // Selects the row whose cell shows text, as a click would.
    static void Pick(Grid* g, const char* key, const QString& text) {
        for (int r = 1; r <= g->Rows(); ++r)
            if (g->CellText(r, g->ColumnIndex(key)) == text) return g->SetSelectedRow(r);
        FAIL() << "no row " << S(text);
    }
    void Select(const QString& name) { Pick(frm.GridTitles, "ColName", name); }
    void SelectFile(const QString& name) { Pick(frm.GridFiles, "ColFileName", name); }
    QString TitleCell(const char* key) const {
        Grid* g = frm.GridTitles;
        return g->CellText(g->SelectedRow(), g->ColumnIndex(key));
    }

    RecordingShell shell;
    Principal frm;
};

} // namespace cintal::test
