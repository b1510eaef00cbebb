#pragma once
// What the tests of the inspector's windows share: a catalogue with its
// publishers, the main window on it, and the boxes a user would have seen.

#include "../catalogue/CatalogueFixture.h"
#include "../tape/TestSupport.h"
#include "views/Principal.h"

namespace cintal::test {

using Texts = std::vector<std::string>;

class WindowTest : public CatalogueTest, protected Tzx, protected ScriptedBoxes {
protected:
    void SetUp() override {
        CatalogueTest::SetUp();
        Create();
        Publisher(0, "- Desconocido -");
        Publisher(1, "Dinamic");
        Publisher(2, "Ocean");
        Path(1, dir.path());
    }
    QString Disk(const QString& name) const { return dir.filePath(name); }
    // The main window on the catalogue with the named title selected.
    void SelectTitle(const QString& name) {
        ASSERT_TRUE(frm.Form_Load(db));
        Grid* g = frm.GridTitles;
        for (int r = 1; r <= g->Rows(); ++r)
            if (g->CellText(r, g->ColumnIndex("ColName")) == name) g->SetSelectedRow(r);
    }
    QString TitleCell(const char* key) const {
        return frm.GridTitles->CellText(frm.GridTitles->SelectedRow(),
                                        frm.GridTitles->ColumnIndex(key));
    }

    Principal frm;
};

} // namespace cintal::test
